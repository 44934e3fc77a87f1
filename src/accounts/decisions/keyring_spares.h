#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/settings.h"

namespace velmora {

/// Keys of the keyring's entries.
using KeyringKeys = std::vector<std::string>;

/// The keys of entries that no account needs, or none yet. The settings list an entry before it is made and until it is
/// known to be gone, so that wherever the program is killed no entry is forgotten.
KeyringKeys keyringSpares(const SettingsStore& store);

/// Adds keys to that list, and takes keys from it. The caller keeps the settings.
void addKeyringSpares(SettingsStore& store, const KeyringKeys& keys);
void takeKeyringSpares(SettingsStore& store, const KeyringKeys& keys);

/// A key that no entry has had before.
std::string freshKeyringKey();

}  // namespace velmora
