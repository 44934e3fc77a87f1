#pragma once

#include <cstdint>
#include <optional>

#include "accounts/keyring_entries.h"

namespace velmora {

struct Account;
struct Program;

/// Keeps what becomes an account's record, with its password where the options say: one that the user has changed gets
/// an entry of its own in the desktop's keyring, and `taken` that entry's key. Where that can't be, a message tells so.
/// Returns whether it is kept. The caller then makes `taken` the record. Where a password has got another place,
/// `keeping` shuts the interface until the caller is done, and there may be a spare entry to be removed.
bool KeepAccount(Program& program, std::int16_t account, Account& taken, std::optional<KeepingPasswords>& keeping);

}  // namespace velmora
