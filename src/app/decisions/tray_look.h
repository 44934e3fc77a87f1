#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/decisions/accounts.h"

namespace velmora {

/// Pictures of imlTrayIcons, each laid upon those before it.
using TrayPicture = std::vector<std::int16_t>;

inline constexpr std::int16_t plainPicture = 7;
inline constexpr std::int16_t noConnectionPicture = 8;
inline constexpr std::int16_t autoCheckOffPicture = 9;

/// What the tray shows for one second.
struct TrayLook {
  TrayPicture picture;
  std::string tip;
  std::int16_t nextAccount = 0;  ///< where the walk over the accounts goes on

  bool operator==(const TrayLook&) const = default;
};

/// The picture of the next account from `TrayAccount` on that has been checked, with its count, which is that of its
/// new messages where `newOnly` says so; the plain picture after the last one. The tip sums up those that were reached.
TrayLook trayLook(const Accounts& accounts, bool newOnly, std::int16_t TrayAccount);

/// As much of a tip as a tray takes.
std::string trayTip(std::string_view tip);

}  // namespace velmora
