#pragma once

#include <string>

namespace velmora {

/// What the desktop's keyring answered.
struct KeyringAnswer {
  enum class Outcome {
    Done,
    NotFound,  ///< there is no such entry
    Refused,   ///< it is locked, or its user or the desktop doesn't let the program use it
    NotThere,  ///< the desktop has none, or it doesn't work
  };

  Outcome outcome = Outcome::NotThere;
  std::string password = {};  ///< of an entry that was read
  std::string detail = {};    ///< the keyring's own words on what went wrong, blank where it has none

  bool isDone() const { return outcome == Outcome::Done; }
};

/// The keyring of the user's desktop, in which this program's entries are told apart by their keys. Each call blocks
/// while the event loop turns, since a locked keyring asks its user first, but not for ever, and not once the program
/// is ending.
class Keyring {
 public:
  virtual ~Keyring() = default;

  virtual KeyringAnswer read(const std::string& key) = 0;

  /// Makes an entry, or replaces one.
  virtual KeyringAnswer write(const std::string& key, const std::string& password) = 0;

  /// Removes an entry. One that isn't there is removed or not found, as the keyring likes.
  virtual KeyringAnswer remove(const std::string& key) = 0;

  /// Ends the call that waits, if one does: it counts as refused.
  virtual void giveUp() = 0;
};

}  // namespace velmora
