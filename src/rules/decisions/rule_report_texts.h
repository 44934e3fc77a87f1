#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "accounts/decisions/accounts.h"
#include "platform/platform.h"
#include "rules/decisions/rules.h"

namespace velmora {

/// The Rule Report opens after a check. Where only new messages count, the first account with a mark decides alone.
bool wantsRuleReport(const Accounts& accounts, const RuleSetHead& rules);

/// Which accounts have marks of one kind.
struct MarkedAccounts {
  std::int16_t count = 0;
  std::string text;  ///< a line each, ended by CR LF, and a last one where they are many; `nothing` where there is none
};
MarkedAccounts markedAccounts(const Accounts& accounts, std::int16_t AccountState::*marks, std::string_view nothing);

/// What is said where a deletion out of the report fails in the middle.
Question deletionTrouble(std::string_view appTitle);

}  // namespace velmora
