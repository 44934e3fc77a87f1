#include "checking/decisions/notification_texts.h"

namespace velmora {

namespace {

/// Values of the option ShowEmail.
constexpr std::int16_t onlyNew = 0;
constexpr std::int16_t anyMessages = 1;
constexpr std::int16_t always = 2;

bool wantsSound(const AccountState& account, std::int16_t ShowEmail) {
  return ShowEmail == always || (ShowEmail == onlyNew && account.AcntHasNew) ||
         (ShowEmail == anyMessages && account.AcntHasMessages);
}

}  // namespace

std::optional<std::string> messageHeadline(std::int16_t ShowEmail, const WalkFindings& found, std::string_view time) {
  const auto headline = [time](const std::string& count, const char* what) {
    return count + what + " found at " + std::string(time);
  };
  if (ShowEmail == onlyNew && found.anyNew) return headline(std::to_string(found.TotalNew), " New Message(s)");
  if (ShowEmail != anyMessages && ShowEmail != always) return std::nullopt;
  if (found.anyMessages) return headline(std::to_string(found.TotalMessages), " Message(s)");
  return ShowEmail == always ? std::optional(headline("No", " Message(s)")) : std::nullopt;
}

std::vector<std::int16_t> soundingAccounts(const Accounts& accounts, std::int16_t account, std::int16_t ShowEmail,
                                           bool DefaultSoundValid) {
  std::vector<std::int16_t> sounding;
  for (const std::int16_t number : accounts.numbers()) {
    if (account != 0 && number != account) continue;
    const Accounts::Row& row = accounts[number];
    const bool oneForAll = account == 0 && DefaultSoundValid;
    if (account == 0 && row.AcntEnabled != 1) continue;
    if (!oneForAll && row.AcntSoundOn == 0) continue;
    if (!wantsSound(row, ShowEmail)) continue;
    sounding.push_back(number);
    if (oneForAll) break;
  }
  return sounding;
}

}  // namespace velmora
