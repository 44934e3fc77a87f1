#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmora {

struct Program;

/// What the program keeps of its dealings with the desktop's keyring.
struct KeyringState {
  bool refused = false;  ///< checks leave it alone until the user begins one, or saves something
  bool busy = false;     ///< entries are being made or removed: nothing of that kind begins
};

/// Shuts the interface, as far as it isn't, for as long as entries are made and removed.
class KeepingPasswords {
 public:
  /// `program` outlives it.
  explicit KeepingPasswords(Program& program);
  ~KeepingPasswords();
  KeepingPasswords(const KeepingPasswords&) = delete;
  KeepingPasswords& operator=(const KeepingPasswords&) = delete;

 private:
  Program& program_;
};

/// A password that is to lie under a new key.
struct KeyringEntry {
  std::int16_t account = 0;
  std::string key;
  std::string password;
};

/// Makes these entries and reads each of them back. They count as spare until the caller has kept settings that name
/// them as an account's. Returns the trouble, for people, where one couldn't be made.
std::optional<std::string> WriteEntries(Program& program, const std::vector<KeyringEntry>& entries);

/// Removes the entries that the settings list as spare, as far as the keyring lets that happen.
void RemoveSpareEntries(Program& program);

/// The same, for those that are left from another time, unless entries are being made or removed just now.
void TidyEntries(Program& program);

}  // namespace velmora
