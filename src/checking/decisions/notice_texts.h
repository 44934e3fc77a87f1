#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "accounts/decisions/accounts.h"
#include "messages/decisions/message_store.h"
#include "platform/notice.h"

namespace velmora {

/// Lines below the summary of a notification, which tells the rest by its number.
inline constexpr std::size_t noticeLines = 5;

/// Accounts that a notification can lead to: the first by a click, the others by a button each.
inline constexpr std::size_t noticeAccounts = 4;

/// What a check has found in an account that was not there before.
struct AccountNews {
  std::string account;
  std::int32_t count = 0;
  std::vector<std::string> first;  ///< sender and subject of the first ones, as many as a notification has lines

  bool operator==(const AccountNews&) const = default;
};

/// An account whose messages a check could not bring in.
struct AccountFailure {
  std::string account;
  std::string reason;

  bool operator==(const AccountFailure&) const = default;
};

/// Nothing where there is nothing new. `messages` are those that the account has now.
std::optional<AccountNews> newsOf(const Accounts::Row& account, const MessageRange& messages);

/// Of at least one account.
Notice newsNotice(std::span<const AccountNews> news);

/// Likewise.
Notice failuresNotice(std::span<const AccountFailure> failures);

}  // namespace velmora
