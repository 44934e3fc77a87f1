#include "accounts/keep_account.h"

#include "accounts/decisions/keyring_spares.h"
#include "accounts/decisions/keyring_texts.h"
#include "app/program.h"
#include "options/keep_settings.h"

namespace velmora {

namespace {

/// An entry belongs to one password: another password, or one that is new to the keyring, gets another entry.
bool wantsOtherPlace(const Program& program, const Account& record, const Account& taken) {
  const bool changed = taken.AcntPassword != record.AcntPassword;
  if (!record.AcntKeyringKey.empty()) return changed;
  return program.options.UseKeyring == 1 && !taken.AcntPassword.empty();
}

bool makeEntry(Program& program, std::int16_t account, Account& taken) {
  taken.AcntKeyringKey.clear();
  if (program.options.UseKeyring != 1 || taken.AcntPassword.empty()) return true;
  taken.AcntKeyringKey = freshKeyringKey();
  const auto trouble = WriteEntries(program, {{account, taken.AcntKeyringKey, taken.AcntPassword}});
  if (trouble) program.platform.MsgBox(passwordNotSaved(program.AppTitle, *trouble));
  return !trouble;
}

bool keep(Program& program, std::int16_t account, const Account& taken) {
  SettingsStore& settings = program.platform.settings();
  Accounts::SaveAccountFields(settings, account, taken);
  const std::string& former = program.accounts[account].AcntKeyringKey;
  if (former != taken.AcntKeyringKey) {
    takeKeyringSpares(settings, {taken.AcntKeyringKey});
    if (!former.empty()) addKeyringSpares(settings, {former});
  }
  return KeepSettings(program, "The Account was not saved.");
}

/// The user may end the program, and answer that he wants to save, while the keyring asks him something.
bool keepElsewhere(Program& program, std::int16_t account, Account& taken, std::optional<KeepingPasswords>& keeping) {
  if (program.keyring.busy) {
    program.platform.MsgBox(passwordNotSaved(program.AppTitle, keyringBusy));
    return false;
  }
  keeping.emplace(program);
  if (!makeEntry(program, account, taken) || !keep(program, account, taken)) {
    RemoveSpareEntries(program);
    return false;
  }
  program.accounts[account].AcntPasswordKnown = true;
  program.accounts[account].AcntPasswordForNow.clear();
  return true;
}

}  // namespace

bool KeepAccount(Program& program, std::int16_t account, Account& taken, std::optional<KeepingPasswords>& keeping) {
  program.keyring.refused = false;
  const Account& record = program.accounts[account];
  taken.AcntKeyringKey = record.AcntKeyringKey;
  return wantsOtherPlace(program, record, taken) ? keepElsewhere(program, account, taken, keeping)
                                                 : keep(program, account, taken);
}

}  // namespace velmora
