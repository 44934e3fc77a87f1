#include "accounts/save_account.h"

#include "accounts/accounts_page.h"
#include "accounts/decisions/account_names.h"
#include "accounts/decisions/account_texts.h"
#include "app/pages.h"
#include "app/program.h"
#include "app/status_bar.h"
#include "platform/set_for_now.h"
#include "platform/text.h"
#include "platform/usable_file.h"

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

/// In memory only: the Rules file follows when it is next written. A new account had no name that a rule could have,
/// and a rule for all accounts isn't this one's, whatever that is called.
void renameInRules(Program& program, const std::string& from, const std::string& to) {
  if (from.empty() || from == allAccounts || to == allAccounts) return;
  for (Rule& rule : program.rules.live.rules()) {
    if (rule.Account == from) rule.Account = to;
  }
  for (WorkingRule& rule : program.rules.working.rules()) {
    if (rule.Account == from) rule.Account = to;
  }
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

/// A path that a default hides at present stays as it was.
void takeOver(const Program& program, const Account& edit, Accounts::Row& row) {
  Account taken = edit;
  if (program.DefaultClientValid) taken.AcntClient = row.AcntClient;
  if (program.sounds.DefaultSoundValid) {
    taken.AcntSound = row.AcntSound;
    taken.AcntSoundOn = row.AcntSoundOn;
  }
  static_cast<Account&>(row) = std::move(taken);
  if (!program.DefaultClientValid) row.AcntClientValid = isUsableFile(program.platform, row.AcntClient, ".exe");
  if (!program.sounds.DefaultSoundValid) row.AcntSoundValid = isUsableFile(program.platform, row.AcntSound, ".wav");
}

Account newAccount(const Accounts& accounts) {
  Account account;
  account.AcntName = newAccountName(accounts);
  return account;
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
  row.AcntLastCheckTime = formatDateTime(program.platform.now(), "h:mm:ss AM/PM", program.platform.monthNames());
}

}  // namespace

void SaveAccount(Program& program) {
  const std::int16_t account = program.accounts.AcntCurrent;
  if (account == 0 || !isNameGood(program, account)) return;
  Accounts::Row& row = program.accounts[account];
  const std::string former = row.AcntName;
  takeOver(program, program.accounts.Edit(account), row);
  renameInRules(program, former, row.AcntName);
  program.accounts.SaveAccountFields(program.platform.settings(), account);
  renameOnScreen(program, account, former, row.AcntName);
  ShowAccount(program, account);
  program.frmMain.TabStripAcnts.SelectTab(account);
}

void AddAccount(Program& program) {
  Accounts& accounts = program.accounts;
  MainWindow& frmMain = program.frmMain;
  const SetForNow busy(program.acnts.AcntBusy, true);
  const Account added = newAccount(accounts);
  const auto number = static_cast<std::int16_t>(accounts.AcntNum() + 1);
  accounts.ResizeAccounts(number);
  program.messages.ResizeAccountStore(number);
  accounts.AcntCurrent = number;
  accounts[number].AcntName.clear();
  accounts.Edit(number) = added;
  for (TabStrip* strip : {&frmMain.TabStripEmail, &frmMain.TabStripAcnts}) addTab(*strip, added.AcntName, number == 1);
  frmMain.TabStripAcnts.SelectTab(number);
  SaveAccount(program);
  program.platform.settings().SaveSetting(settingsSection, "AcntNum", std::to_string(number));
  for (TabStrip* strip : {&frmMain.TabStripEmail, &frmMain.TabStripAcnts}) strip->Tabs(number).Caption = added.AcntName;
  resetRow(program, number);
  ShowAccount(program, number);
  RefreshAccountPanels(program, number);
  frmMain.txtAcntName.SetFocus();
}

}  // namespace velmora
