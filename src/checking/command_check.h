#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace velmora {

class Keyring;
class PopClient;
class SettingsStore;

/// What a check from the command line found, as its exit status. A failure counts more than messages.
enum class CheckStatus : std::uint8_t { NoMessages = 0, Messages = 1, Failure = 2 };

/// Takes the lines of such a check, without their ends, as they come. They may hold what a server sent.
struct CheckLines {
  std::function<void(const std::string&)> result;   ///< one for each account
  std::function<void(const std::string&)> trouble;  ///< why one could not be checked
};

/// Asks the servers of all enabled accounts, one by one, how many messages they hold; brings none of them. Nothing is
/// remembered from one run to the next, so all of them count as new, as at the first check of every run. Blocks while
/// the event loop turns. Where no account is enabled, that is trouble. The keyring is asked for the passwords that it
/// holds, and nothing else.
CheckStatus CheckFromCommandLine(const SettingsStore& settings, Keyring& keyring, PopClient& client,
                                 const CheckLines& lines);

}  // namespace velmora
