#include "app/decisions/tray_look.h"

#include <algorithm>
#include <optional>

#include "platform/text.h"

namespace velmora {

namespace {

constexpr std::int16_t colours = 6;
constexpr std::int16_t loneDigits = 10;
constexpr std::int16_t unitsDigits = 20;
constexpr std::int16_t tensDigits = 29;
constexpr std::int16_t manyMessages = 39;
constexpr std::int16_t emptyGround = 40;
constexpr std::int16_t mostCounted = 99;

std::int16_t shownCount(const Accounts::Row& account, bool newOnly) {
  return newOnly ? account.AcntNewCount : account.AcntMsgCount;
}

/// A field in the account's colour. A settings file may name colours that there are not.
std::int16_t colourOf(const Accounts::Row& account) {
  const bool known = account.AcntColourIndex >= 1 && account.AcntColourIndex <= colours;
  return static_cast<std::int16_t>(known ? account.AcntColourIndex : Account{}.AcntColourIndex);
}

/// Either count at 100 or more gives the mark for many, whichever is shown.
TrayPicture accountPicture(const Accounts::Row& account, bool newOnly) {
  const std::int16_t colour = colourOf(account);
  if (std::max(account.AcntMsgCount, account.AcntNewCount) > mostCounted) return {colour, emptyGround, manyMessages};
  const auto count = std::max<std::int16_t>(shownCount(account, newOnly), 0);
  const auto tens = static_cast<std::int16_t>(count / 10);
  const auto units = static_cast<std::int16_t>(count % 10);
  if (tens == 0) return {colour, emptyGround, static_cast<std::int16_t>(loneDigits + units)};
  return {colour, static_cast<std::int16_t>(tensDigits + tens), static_cast<std::int16_t>(unitsDigits + units)};
}

bool isShown(const Accounts::Row& account) { return account.AcntEnabled == 1 && account.AcntChecked; }

/// The next account to show. Leaves `account` behind the last one, where it wraps to the placeholder before the first,
/// so that each pass ends with nothing to show.
std::optional<std::int16_t> findNext(const Accounts& accounts, std::int16_t& account) {
  const std::int16_t last = accounts.AcntNum();
  for (int step = 0; step <= last; ++step, ++account) {
    if (account > last) {
      account = 0;
      step = last;
    }
    if (isShown(accounts[account])) return account;
  }
  return std::nullopt;
}

}  // namespace

TrayLook trayLook(const Accounts& accounts, bool newOnly, std::int16_t TrayAccount) {
  int reached = 0;
  int messages = 0;
  for (const std::int16_t number : accounts.numbers()) {
    if (!accounts[number].AcntChecked || !accounts[number].AcntConnected) continue;
    ++reached;
    messages += shownCount(accounts[number], newOnly);
  }
  if (reached == 0) return {{noConnectionPicture}, "No Connection has been established.", TrayAccount};
  TrayLook look{
      {plainPicture},
      trayTip(accounts[0].AcntLastCheckText + "\r\n" + std::to_string(messages) +
              (newOnly ? " New Message(s) in " : " Message(s) in ") + std::to_string(reached) + " Account(s)."),
      TrayAccount};
  if (const auto found = findNext(accounts, look.nextAccount)) {
    look.picture = accountPicture(accounts[*found], newOnly);
    ++look.nextAccount;
  }
  return look;
}

std::string trayTip(std::string_view tip) {
  constexpr std::size_t longest = 63;
  return std::string(text::left(tip, longest));
}

}  // namespace velmora
