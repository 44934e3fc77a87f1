#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "accounts/decisions/accounts.h"
#include "platform/date_time.h"
#include "platform/platform.h"

namespace velmora {

/// What the first status panel says of an account that has just been checked.
std::string statusTextAfterCheck(const Accounts::Row& account, bool stopRequested);

/// What it says of one whose messages have just been deleted.
std::string statusTextAfterDeletion(const Accounts::Row& account);

/// "4:05 PM"
std::string timeText(const DateTime& now);

/// The warning that some accounts may not have brought in all their messages. `accountNames` holds one name a line.
Question incompleteWarning(std::string_view appTitle, int accounts, std::string_view accountNames);

/// The question before `count` messages of an account are deleted.
Question deleteQuestion(std::string_view appTitle, std::string_view accountName, std::size_t count, bool spam);

/// What Check All says where no account was enabled.
Question nothingCheckedNotice(std::string_view appTitle);

/// What is shown while one message is fetched.
std::string fetchingText(std::string_view accountName);

}  // namespace velmora
