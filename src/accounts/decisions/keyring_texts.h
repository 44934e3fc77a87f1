#pragma once

#include <string>
#include <string_view>

#include "platform/keyring.h"
#include "platform/platform.h"

namespace velmora {

/// What stands beside the box of a password that was not read yet.
inline constexpr const char* heldByKeyring = "The desktop's keyring holds it. Type to replace it.";

/// Why the keyring did not do what it was asked, for people.
std::string keyringTrouble(const KeyringAnswer& answer);

/// The keyring gave back something else than was written into it.
inline constexpr std::string_view keyringForgets = "The desktop's keyring did not keep the password.";

/// Nothing else can be begun with the keyring.
inline constexpr std::string_view keyringBusy =
    "Velmora is busy with the accounts or their passwords.\r\nPlease save once more when that is over.";

/// Asks for a password that can't be had from the keyring.
PasswordQuestion passwordQuestion(std::string_view appTitle, std::string_view accountName, const KeyringAnswer& answer);

/// Asks for one that is to be kept in the settings file in place of the keyring's.
PasswordQuestion passwordForSettings(std::string_view appTitle, std::string_view accountName,
                                     const KeyringAnswer& answer);

/// The passwords are where they should be, and what is left of them in the keyring could not be removed.
Question entriesRemain(std::string_view appTitle);

/// The passwords stay where they are, and an account isn't saved.
Question passwordsNotMoved(std::string_view appTitle, bool intoKeyring, std::string_view trouble);
Question passwordNotSaved(std::string_view appTitle, std::string_view trouble);

}  // namespace velmora
