#pragma once

#include <cstdint>
#include <string>

namespace velmora {

/// No email client can be started for the account showing.
inline constexpr std::int16_t noClient = -1;

/// Whose email client is in force: that of all accounts, which is 0, the one of the account showing, or noClient.
constexpr std::int16_t shownClient(bool DefaultClientValid, std::int16_t account, bool AcntClientValid) {
  if (DefaultClientValid) return 0;
  return AcntClientValid && account > 0 ? account : noClient;
}

/// The key of a client's picture. It bears the path, whose file the picture comes from.
inline std::string clientPicture(std::int16_t number, const std::string& path) {
  return number == noClient ? "Folder" : "MailClient" + std::to_string(number) + ':' + path;
}

}  // namespace velmora
