#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "accounts/accounts.h"
#include "platform/platform.h"
#include "rules/rules.h"

namespace velmora {

/// The Rule Report opens after a check. Where only new messages count, the first account with a mark decides alone.
bool wantsRuleReport(const Accounts& accounts, const RuleSetHead& rules);

/// Which accounts have marks of one kind.
struct MarkedAccounts {
  std::int16_t count = 0;
  std::string text;  ///< a line each, ended by CR LF; what stands in `nothing` where there is none
};
MarkedAccounts markedAccounts(const Accounts& accounts, std::int16_t AccountState::*marks, std::string_view nothing);

/// Lines that both texts of the report have room for. Brings the texts in line with it: one that is too long says so.
std::int16_t fitReport(MarkedAccounts& deletions, MarkedAccounts& spam);

/// What is said where a deletion out of the report fails in the middle.
Question deletionTrouble(std::string_view appTitle);

}  // namespace velmora
