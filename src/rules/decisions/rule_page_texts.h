#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace velmora {

/// The rule has all the entries that it can have.
Question maximumEntries(std::string_view appTitle);

/// The two reasons for which rules can't be saved.
Question blankRuleName(std::string_view appTitle);
Question blankDescription(std::string_view appTitle);

/// Whether a rule may be deleted.
Question deleteRuleWarning(std::string_view name);

/// What is to become of changed rules that the user is about to leave.
Question rulesNotSaved();

/// Whether a Rules file may be replaced that somebody has changed since it was last read or written here.
Question rulesFileChanged(std::string_view appTitle, std::string_view path);

/// Whether a Rules file may be replaced that is not the one in use.
Question rulesFileExists(std::string_view appTitle, std::string_view path);

/// How a rule does with the messages in the lists.
struct FitCounts {
  std::size_t fits = 0;
  std::size_t messages = 0;
  std::size_t left = 0;    ///< not gone through yet
  std::size_t failed = 0;  ///< of which the rule can't tell
};
std::string ruleFitsText(const FitCounts& counts);

}  // namespace velmora
