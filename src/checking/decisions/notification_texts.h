#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/decisions/accounts.h"
#include "options/decisions/options.h"

namespace velmora {

/// What a timed walk over the accounts found.
struct WalkFindings {
  bool anyNew = false;
  bool anyMessages = false;
  std::int16_t TotalMessages = 0;
  std::int16_t TotalNew = 0;
};

/// The headline of the Auto Check Message, where the option ShowEmail wants the findings to be told at all. `time` is
/// the present one, "4:05 PM".
std::optional<std::string> messageHeadline(std::int16_t ShowEmail, const WalkFindings& found, std::string_view time);

/// The accounts whose sounds play, in order: of the one checked, or of all with `account` 0. With a default sound,
/// which is `DefaultSoundValid`, one speaks for all.
std::vector<std::int16_t> soundingAccounts(const Accounts& accounts, std::int16_t account, std::int16_t ShowEmail,
                                           bool DefaultSoundValid);

}  // namespace velmora
