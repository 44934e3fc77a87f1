#pragma once

#include <string>
#include <string_view>

#include "accounts/accounts.h"
#include "platform/date_time.h"
#include "platform/platform.h"

namespace velmora {

/// What the first status panel says of an account that has just been checked.
std::string statusTextAfterCheck(const Accounts::Row& account, bool stopRequested);

/// "4:05 PM"
std::string timeText(const DateTime& now);

/// The warning that some accounts may not have brought in all their messages. `accountNames` holds one name a line.
Question incompleteWarning(std::string_view appTitle, int accounts, std::string_view accountNames);

/// What Check All says where no account was enabled.
Question nothingCheckedNotice(std::string_view appTitle);

}  // namespace velmora
