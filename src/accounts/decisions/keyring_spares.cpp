#include "accounts/decisions/keyring_spares.h"

#include <algorithm>
#include <cstddef>
#include <random>
#include <sstream>

#include "accounts/decisions/accounts.h"

namespace velmora {

namespace {

constexpr std::string_view listKey = "KeyringSpares";
constexpr std::size_t keyLength = 32;
constexpr std::string_view hexDigits = "0123456789abcdef";

/// Of all accounts, moved there and back and there again while the keyring took nothing away.
constexpr std::size_t mostSpares = std::size_t{4} * mostAccounts;

bool isKey(std::string_view text) {
  return text.size() == keyLength && text.find_first_not_of(hexDigits) == std::string_view::npos;
}

bool contains(const KeyringKeys& keys, const std::string& key) { return std::ranges::find(keys, key) != keys.end(); }

/// The list takes no room in the settings of whoever has never used the keyring.
void store(SettingsStore& store, const KeyringKeys& keys) {
  std::string list;
  for (const std::string& key : keys) list += (list.empty() ? "" : " ") + key;
  if (list.empty()) {
    store.DeleteSetting(settingsSection, listKey);
  } else {
    store.SaveSetting(settingsSection, listKey, list);
  }
}

}  // namespace

/// What isn't one of the program's own keys was written by somebody else, and is left alone.
KeyringKeys keyringSpares(const SettingsStore& store) {
  std::istringstream list(store.GetSetting(settingsSection, listKey, ""));
  KeyringKeys keys;
  std::string key;
  while (keys.size() < mostSpares && list >> key) {
    if (isKey(key)) keys.push_back(key);
  }
  return keys;
}

void addKeyringSpares(SettingsStore& settings, const KeyringKeys& keys) {
  if (keys.empty()) return;
  KeyringKeys spares = keyringSpares(settings);
  for (const std::string& key : keys) {
    if (isKey(key) && !contains(spares, key)) spares.insert(spares.begin(), key);  // where none is cut off
  }
  store(settings, spares);
}

void takeKeyringSpares(SettingsStore& settings, const KeyringKeys& keys) {
  KeyringKeys spares = keyringSpares(settings);
  if (std::erase_if(spares, [&keys](const std::string& key) { return contains(keys, key); }) > 0) {
    store(settings, spares);
  }
}

std::string freshKeyringKey() {
  std::random_device random;
  std::uniform_int_distribution<std::size_t> digit(0, hexDigits.size() - 1);
  std::string key;
  while (key.size() < keyLength) key += hexDigits.at(digit(random));
  return key;
}

}  // namespace velmora
