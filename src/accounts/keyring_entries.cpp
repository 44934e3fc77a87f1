#include "accounts/keyring_entries.h"

#include <string_view>
#include <unordered_set>
#include <utility>

#include "accounts/decisions/keyring_spares.h"
#include "accounts/decisions/keyring_texts.h"
#include "app/program.h"
#include "platform/set_for_now.h"

namespace velmora {

namespace {

std::optional<std::string> write(Keyring& keyring, const KeyringEntry& entry) {
  if (const KeyringAnswer written = keyring.write(entry.key, entry.password); !written.isDone()) {
    return keyringTrouble(written);
  }
  const KeyringAnswer read = keyring.read(entry.key);
  if (!read.isDone()) return keyringTrouble(read);
  if (read.password != entry.password) return std::string(keyringForgets);
  return std::nullopt;
}

/// As the settings have them, which is what the next start of the program goes by.
std::unordered_set<std::string> keysInUse(const Program& program) {
  Accounts kept;
  const SettingsStore& settings = program.platform.settings();
  kept.ResizeAccounts(Accounts::storedCount(settings).count);
  std::unordered_set<std::string> keys;
  for (const std::int16_t number : kept.numbers()) {
    kept.LoadAccount(settings, number);
    keys.insert(kept[number].AcntKeyringKey);
  }
  return keys;
}

}  // namespace

KeepingPasswords::KeepingPasswords(Program& program) : program_(program) {
  program_.keyring.busy = true;
  if (program_.activity == Activity::Idle) SetCheckingInterface(program_, Activity::Keeping);
}

KeepingPasswords::~KeepingPasswords() {
  program_.keyring.busy = false;
  if (program_.activity == Activity::Keeping) SetCheckingInterface(program_, Activity::Idle);
}

std::optional<std::string> WriteEntries(Program& program, const std::vector<KeyringEntry>& entries) {
  if (entries.empty()) return std::nullopt;
  program.keyring.refused = false;
  KeyringKeys keys;
  for (const KeyringEntry& entry : entries) keys.push_back(entry.key);
  SettingsStore& settings = program.platform.settings();
  addKeyringSpares(settings, keys);
  if (auto reason = settings.Keep()) return reason;
  for (const KeyringEntry& entry : entries) {
    if (auto trouble = write(program.platform.keyring(), entry)) return trouble;
  }
  return std::nullopt;
}

/// An entry that an account uses is none of them, whatever somebody has written into the list.
void RemoveSpareEntries(Program& program) {
  SettingsStore& settings = program.platform.settings();
  const KeyringKeys spares = keyringSpares(settings);
  if (spares.empty()) return;
  const std::unordered_set<std::string> used = keysInUse(program);
  KeyringKeys gone;
  for (const std::string& key : spares) {
    const bool isGone = used.contains(key) || [&] {
      const KeyringAnswer answer = program.platform.keyring().remove(key);
      return answer.isDone() || answer.outcome == KeyringAnswer::Outcome::NotFound;
    }();
    if (!isGone) break;
    gone.push_back(key);
  }
  takeKeyringSpares(settings, gone);
  settings.Keep();  // what stays listed is removed once more
}

void TidyEntries(Program& program) {
  if (program.keyring.busy || keyringSpares(program.platform.settings()).empty()) return;
  const KeepingPasswords keeping(program);
  RemoveSpareEntries(program);
}

}  // namespace velmora
