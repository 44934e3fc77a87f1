#include "accounts/save_account.h"

#include <optional>

#include "accounts/accounts_page.h"
#include "accounts/decisions/account_names.h"
#include "accounts/decisions/account_texts.h"
#include "accounts/keep_account.h"
#include "app/pages.h"
#include "app/program.h"
#include "app/status_bar.h"
#include "options/keep_settings.h"
#include "platform/set_for_now.h"
#include "platform/text.h"
#include "rules/rules_page.h"
#include "rules/save_rules.h"

namespace velmora {

namespace {

bool refuseName(Program& program, const Question& refusal) {
  program.platform.MsgBox(refusal);
  program.frmMain.txtAcntName.SetFocus();
  return false;
}

bool isNameGood(Program& program, std::int16_t account) {
  const std::string& name = program.accounts.Edit(account).AcntName;
  if (text::trim(name).empty()) return refuseName(program, blankName());
  if (isNameTaken(program.accounts, account)) return refuseName(program, duplicateName(name));
  return true;
}

/// Puts the new name in front of what a check has put behind the old one, wherever that is shown.
void renameOnScreen(Program& program, std::int16_t account, const std::string& from, const std::string& to) {
  MainWindow& frmMain = program.frmMain;
  for (TabStrip* strip : {&frmMain.TabStripEmail, &frmMain.TabStripAcnts}) {
    Property<std::string>& caption = strip->Tabs(account).Caption;
    caption = to + behindName(caption.get(), from);
  }
  std::string& status = program.accounts[account].AcntStatusText;
  status = to + behindName(status, from);
  frmMain.StatusBar.Panels(1).Text = status;
}

Account newAccount(const Accounts& accounts) {
  Account account;
  account.AcntName = newAccountName(accounts);
  return account;
}

bool keepAdded(Program& program, std::int16_t number, const Account& added) {
  SettingsStore& settings = program.platform.settings();
  Accounts::SaveAccountFields(settings, number, added);
  settings.SaveSetting(settingsSection, "AcntNum", std::to_string(number));
  return KeepSettings(program, "No Account was added.");
}

/// Without accounts there is a tab that stands for none.
void addTab(TabStrip& strip, const std::string& name, bool isFirst) {
  if (isFirst) strip.RemoveLast();
  strip.Add(name, "MailNo");
}

void resetRow(Program& program, std::int16_t account) {
  Accounts::Row& row = program.accounts[account];
  static_cast<AccountState&>(row) = {};
  row.AcntStatusText = row.AcntName;
  row.AcntLastCheckText = "Not Checked";
  row.AcntLastCheckTime = formatDateTime(program.platform.now(), "h:mm:ss AM/PM", program.platform.dateNames());
}

}  // namespace

Saving SaveAccount(Program& program) {
  const std::int16_t account = program.accounts.AcntCurrent;
  if (account == 0 || !isNameGood(program, account)) return Saving::NameRefused;
  Account taken = program.accounts.Edit(account);
  if (!haveSameServer(taken, program.accounts[account])) forgetCertificate(taken);
  std::optional<KeepingPasswords> keeping;
  if (!KeepAccount(program, account, taken, keeping)) return Saving::NotKept;
  Accounts::Row& row = program.accounts[account];
  const std::string former = row.AcntName;
  static_cast<Account&>(row) = taken;
  renameOnScreen(program, account, former, row.AcntName);
  FillRuleAccounts(program);
  ShowAccount(program, account);
  program.frmMain.TabStripAcnts.SelectTab(account);
  RenameAccountInRules(program, former, taken.AcntName);
  if (keeping) RemoveSpareEntries(program);
  return Saving::Done;
}

void AddAccount(Program& program) {
  Accounts& accounts = program.accounts;
  MainWindow& frmMain = program.frmMain;
  const Account added = newAccount(accounts);
  const auto number = static_cast<std::int16_t>(accounts.AcntNum() + 1);
  if (!keepAdded(program, number, added)) return;
  const SetForNow busy(program.acnts.AcntBusy, true);
  accounts.ResizeAccounts(number);
  program.messages.ResizeAccountStore(number);
  accounts.AcntCurrent = number;
  static_cast<Account&>(accounts[number]) = added;
  for (TabStrip* strip : {&frmMain.TabStripEmail, &frmMain.TabStripAcnts}) addTab(*strip, added.AcntName, number == 1);
  frmMain.TabStripAcnts.SelectTab(number);
  resetRow(program, number);
  ShowAccount(program, number);
  RefreshAccountPanels(program, number);
  FillRuleAccounts(program);
  frmMain.txtAcntName.SetFocus();
}

}  // namespace velmora
