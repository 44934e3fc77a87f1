#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "accounts/decisions/accounts.h"
#include "options/decisions/options.h"

namespace velmora {

/// What a user takes along to another machine: all that he has set. Which Rules file is in use, and whether a keyring
/// holds passwords, is a matter of each machine.
struct MovedSettings {
  Options options;
  std::vector<Account> accounts;  ///< in the order of their tabs
  std::string rules;              ///< the whole text of a Rules file
};

/// The options among them.
std::vector<const OptionField*> movedOptions();

/// The text of a file that holds them, and by which one can tell whether anything is missing.
std::string composeMoveFile(const MovedSettings& moved);

/// What a file holds, or why nothing can be made of it.
struct ParsedMoveFile {
  enum class Fault { None, Foreign, Newer, Damaged };

  Fault fault = Fault::None;
  MovedSettings moved;  ///< of use without a fault only
};

/// What the file doesn't say of an option is as in `present`. A file that is none of the program's own, or cut or
/// changed on its way, has a fault, and so has one whose accounts could not stand beside each other.
ParsedMoveFile parseMoveFile(std::string_view text, const Options& present);

}  // namespace velmora
