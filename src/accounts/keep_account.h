#pragma once

#include <cstdint>
#include <string>

namespace velmora {

struct Account;
struct Program;

/// Keeps what becomes an account's record, with its password where the options say: one that the user has changed gets
/// an entry of its own in the desktop's keyring, and `taken` that entry's key. Where that can't be, a message tells so.
/// Returns whether it is kept. The caller then makes `taken` the record, and calls RemoveFormerEntry.
bool KeepAccount(Program& program, std::int16_t account, Account& taken);

/// Removes from the keyring what nothing needs any more, where the entry of the key that an account had is not the one
/// that it has now. Either may be blank for none. The settings that were kept list it as spare.
void RemoveFormerEntry(Program& program, const std::string& formerKey, const std::string& key);

}  // namespace velmora
