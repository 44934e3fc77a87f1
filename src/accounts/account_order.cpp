#include "accounts/account_order.h"

#include <algorithm>
#include <string>
#include <utility>

#include "accounts/accounts_page.h"
#include "accounts/decisions/account_texts.h"
#include "accounts/decisions/keyring_spares.h"
#include "accounts/keyring_entries.h"
#include "app/pages.h"
#include "app/program.h"
#include "app/tray.h"
#include "checking/start_up_check.h"
#include "messages/email_page.h"
#include "options/keep_settings.h"
#include "platform/set_for_now.h"
#include "rules/rules_page.h"

namespace velmora {

namespace {

/// Each strip with something done to it.
template <class Action>
void onBothStrips(Program& program, Action action) {
  action(program.frmMain.TabStripEmail);
  action(program.frmMain.TabStripAcnts);
}

void copyTab(TabStrip& strip, std::int16_t from, std::int16_t to) {
  strip.Tabs(to).Caption = strip.Tabs(from).Caption.get();
  strip.Tabs(to).Image = strip.Tabs(from).Image.get();
}

void swapTabs(TabStrip& strip, std::int16_t a, std::int16_t b) {
  const std::string caption = strip.Tabs(a).Caption;
  const std::string image = strip.Tabs(a).Image;
  copyTab(strip, b, a);
  strip.Tabs(b).Caption = caption;
  strip.Tabs(b).Image = image;
}

/// What showNothingLeft makes of the options, so that it is kept together with the deletion.
void saveIdleOptions(Program& program) {
  Options idle = program.EditOptions;
  idle.EmailCheckStartUp = idle.UseInterval = 0;
  writeOptions(program.platform.settings(), idle);
}

/// Where this can't be, nothing has happened yet.
bool keepWithout(Program& program, std::int16_t deleted) {
  const Accounts& accounts = program.accounts;
  SettingsStore& settings = program.platform.settings();
  const std::int16_t last = accounts.AcntNum();
  for (std::int16_t i = 1; i < last && deleted != last; ++i) {
    Accounts::DeleteAccountFields(settings, i);
    Accounts::SaveAccountFields(settings, i, accounts[i < deleted ? i : static_cast<std::int16_t>(i + 1)]);
  }
  Accounts::DeleteAccountFields(settings, last);
  settings.SaveSetting(settingsSection, "AcntNum", std::to_string(last - 1));
  if (last == 1) saveIdleOptions(program);
  if (const std::string& key = accounts[deleted].AcntKeyringKey; !key.empty()) addKeyringSpares(settings, {key});
  return KeepSettings(program, "The Account was not deleted.");
}

/// Lets each account behind `deleted` take the number before it, and brings the deleted one's messages behind them all.
void moveUp(Program& program, std::int16_t deleted) {
  Accounts& accounts = program.accounts;
  for (std::int16_t i = deleted; i < accounts.AcntNum(); ++i) {
    const auto next = static_cast<std::int16_t>(i + 1);
    accounts[i] = accounts[next];
    program.messages.SwapAccounts(i, next);
    onBothStrips(program, [i, next](TabStrip& strip) { copyTab(strip, next, i); });
  }
}

void dropLast(Program& program) {
  onBothStrips(program, [](TabStrip& strip) { strip.RemoveLast(); });
  const auto left = static_cast<std::int16_t>(program.accounts.AcntNum() - 1);
  program.accounts.ResizeAccounts(left);
  program.messages.ResizeAccountStore(left);
}

/// The lists are read anew from what is now kept.
void showWhatIsLeft(Program& program) {
  Accounts& accounts = program.accounts;
  for (const std::int16_t number : accounts.numbers()) {
    accounts.LoadAccount(program.platform.settings(), number);
    accounts.CopyAccountToEdit(number);
  }
  program.frmMain.TabStripAcnts.SelectTab(accounts.AcntCurrent);
  ShowAccount(program, accounts.AcntCurrent);
  ShowTabAnew(program, accounts.AcntCurrent);
}

/// Without accounts nothing checks by itself any more.
void showNothingLeft(Program& program) {
  EndStartUpCountdown(program);
  ChangeOptions(program, [](Options& edit) { edit.EmailCheckStartUp = 0; });
  SwitchAutoCheck(program, false);
  ShowNoAccounts(program);
}

void deleteAccount(Program& program, std::int16_t deleted) {
  Accounts& accounts = program.accounts;
  moveUp(program, deleted);
  dropLast(program);
  accounts.AcntCurrent = std::min(deleted, accounts.AcntNum());
  accounts.AcntCurrent > 0 ? showWhatIsLeft(program) : showNothingLeft(program);
  FillRuleAccounts(program);
}

bool keepSwapped(Program& program, std::int16_t a, std::int16_t b) {
  for (std::int16_t number = 1; number <= program.accounts.AcntNum(); ++number) {
    const std::int16_t from = number == a ? b : number == b ? a : number;
    Accounts::SaveAccountFields(program.platform.settings(), number, program.accounts[from]);
  }
  return KeepSettings(program, "The Account was not moved.");
}

}  // namespace

void DeleteAccount(Program& program) {
  Accounts& accounts = program.accounts;
  const std::int16_t deleted = accounts.AcntCurrent;
  const SetForNow busy(program.acnts.AcntBusy, true);
  const Answer answer = program.platform.MsgBox(deleteWarning(accounts[deleted].AcntName));
  if (answer == Answer::Yes && keepWithout(program, deleted)) {
    deleteAccount(program, deleted);
    TidyEntries(program);
  } else {
    program.frmMain.TabStripAcnts.SelectTab(deleted);
  }
}

void SwapAccounts(Program& program, std::int16_t account, std::int16_t offset) {
  Accounts& accounts = program.accounts;
  const auto other = static_cast<std::int16_t>(account + offset);
  if (!keepSwapped(program, account, other)) return;
  std::swap(accounts[account], accounts[other]);
  accounts.CopyAccountToEdit(account);
  program.messages.SwapAccounts(account, other);
  onBothStrips(program, [account, other](TabStrip& strip) { swapTabs(strip, account, other); });
  FillRuleAccounts(program);
  accounts.AcntCurrent = other;
  {
    const SetForNow busy(program.acnts.AcntBusy, true);
    program.frmMain.TabStripAcnts.SelectTab(other);
  }
  ShowAccount(program, other);
  ShowTabAnew(program, other);
}

}  // namespace velmora
