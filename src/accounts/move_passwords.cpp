#include "accounts/move_passwords.h"

#include <optional>
#include <string>
#include <vector>

#include "accounts/accounts_page.h"
#include "accounts/decisions/keyring_spares.h"
#include "accounts/decisions/keyring_texts.h"
#include "accounts/keyring_entries.h"
#include "app/program.h"

namespace velmora {

namespace {

using Trouble = std::optional<std::string>;

std::vector<KeyringEntry> entriesToMake(const Accounts& accounts) {
  std::vector<KeyringEntry> entries;
  for (const std::int16_t number : accounts.numbers()) {
    const Account& account = accounts[number];
    if (!account.AcntKeyringKey.empty() || account.AcntPassword.empty()) continue;
    entries.push_back({number, freshKeyringKey(), account.AcntPassword});
  }
  return entries;
}

void saveWithKey(Program& program, std::int16_t number, const std::string& key, const std::string& password) {
  Account account = static_cast<const Account&>(program.accounts[number]);
  account.AcntKeyringKey = key;
  account.AcntPassword = password;
  Accounts::SaveAccountFields(program.platform.settings(), number, account);
}

/// One step, behind which the passwords are where the choice says. Nothing turns the event loop in it.
Trouble keepChoice(Program& program, std::int16_t choice) {
  SettingsStore& settings = program.platform.settings();
  settings.SaveSetting(optionsSection, "UseKeyring", toText(choice));
  auto reason = settings.Keep();
  if (!reason) program.options.UseKeyring = choice;
  return reason;
}

Trouble moveIntoKeyring(Program& program) {
  const std::vector<KeyringEntry> entries = entriesToMake(program.accounts);
  if (auto trouble = WriteEntries(program, entries)) return trouble;
  KeyringKeys keys;
  for (const KeyringEntry& entry : entries) {
    keys.push_back(entry.key);
    saveWithKey(program, entry.account, entry.key, entry.password);
  }
  takeKeyringSpares(program.platform.settings(), keys);
  if (auto reason = keepChoice(program, 1)) return reason;
  for (const KeyringEntry& entry : entries) {
    Accounts::Row& row = program.accounts[entry.account];
    row.AcntKeyringKey = entry.key;
    row.AcntPasswordKnown = true;
  }
  return std::nullopt;
}

/// What isn't there any more the user is asked for, who would be bound to the keyring for ever otherwise. One that is
/// only locked has it still.
KeyringAnswer readOrAsk(Program& program, std::int16_t number) {
  const Accounts::Row& row = program.accounts[number];
  if (row.AcntPasswordKnown) return {.outcome = KeyringAnswer::Outcome::Done, .password = row.AcntPassword};
  KeyringAnswer answer = program.platform.keyring().read(std::string(row.AcntKeyringKey));
  if (answer.isDone() || answer.outcome == KeyringAnswer::Outcome::Refused) return answer;
  auto entered =
      program.platform.askForPassword(passwordForSettings(program.AppTitle, program.accounts[number].AcntName, answer));
  if (entered) answer = {.outcome = KeyringAnswer::Outcome::Done, .password = *std::move(entered)};
  return answer;
}

/// Fills the list with all entries, and with what they hold.
Trouble readAll(Program& program, std::vector<KeyringEntry>& entries) {
  for (const std::int16_t number : program.accounts.numbers()) {
    const std::string key = program.accounts[number].AcntKeyringKey;
    if (key.empty()) continue;
    const KeyringAnswer answer = readOrAsk(program, number);
    if (!answer.isDone()) return "Account: " + program.accounts[number].AcntName + "\r\n" + keyringTrouble(answer);
    entries.push_back({number, key, answer.password});
  }
  return std::nullopt;
}

Trouble moveIntoSettings(Program& program) {
  std::vector<KeyringEntry> entries;
  if (auto trouble = readAll(program, entries)) return trouble;
  KeyringKeys keys;
  for (const KeyringEntry& entry : entries) {
    keys.push_back(entry.key);
    saveWithKey(program, entry.account, "", entry.password);
  }
  addKeyringSpares(program.platform.settings(), keys);
  if (auto reason = keepChoice(program, 0)) return reason;
  for (const KeyringEntry& entry : entries) {
    program.accounts[entry.account].AcntKeyringKey.clear();
    LearnPassword(program, entry.account, entry.password);
  }
  return std::nullopt;
}

/// The tray's switches save the options while other things are under way, too. The passwords wait for their end.
Trouble move(Program& program, bool intoKeyring) {
  if (program.activity != Activity::Idle) return std::string(keyringBusy);
  const KeepingPasswords keeping(program);
  auto trouble = intoKeyring ? moveIntoKeyring(program) : moveIntoSettings(program);
  RemoveSpareEntries(program);
  return trouble;
}

}  // namespace

void FollowKeyringChoice(Program& program) {
  const std::int16_t wanted = program.EditOptions.UseKeyring;
  if (wanted == program.options.UseKeyring) return;
  if (!program.keyring.busy) {
    program.keyring.refused = false;
    const auto trouble = move(program, wanted == 1);
    if (trouble) {
      program.platform.MsgBox(passwordsNotMoved(program.AppTitle, wanted == 1, *trouble));
    } else if (!keyringSpares(program.platform.settings()).empty()) {
      program.platform.MsgBox(entriesRemain(program.AppTitle));
    }
  }
  ChangeOptions(program, [inForce = program.options.UseKeyring](Options& edit) { edit.UseKeyring = inForce; });
}

}  // namespace velmora
