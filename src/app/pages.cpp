#include "app/pages.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "accounts/accounts_page.h"
#include "accounts/save_account.h"
#include "app/program.h"
#include "app/shut_down.h"
#include "app/tray.h"
#include "checking/check_cycle.h"
#include "checking/start_up_check.h"
#include "messages/email_client.h"
#include "messages/email_page.h"
#include "messages/message_list.h"

namespace velmora {

namespace {

/// The help's topic of each page.
constexpr std::array<int, pageCount> helpContexts = {130, 140, 150, 260};

Frame& frameOf(Program& program, std::int16_t page) { return program.frmMain.fraMain[static_cast<std::size_t>(page)]; }

/// A tab that is selected already may stand for an account that is new there.
void showCurrentMessages(Program& program) {
  if (program.accounts.AcntNum() == 0) return;
  program.frmMain.TabStripEmail.SelectTab(program.accounts.AcntCurrent);
  TabStripEmail_Click(program);
}

/// Its record, or the options that it goes with, may have changed since it was last seen.
void showCurrentAccount(Program& program) {
  if (program.accounts.AcntNum() == 0) return;
  program.frmMain.TabStripAcnts.SelectTab(program.accounts.AcntCurrent);
  if (!program.AcntDirty) ShowAccount(program, program.accounts.AcntCurrent);
}

/// Puts one page in place of another.
void switchPage(Program& program, std::int16_t from, std::int16_t to) {
  MainWindow& frmMain = program.frmMain;
  frameOf(program, from).Visible = false;
  if (to == emailPage) showCurrentMessages(program);
  if (to == accountsPage) showCurrentAccount(program);
  frameOf(program, to).Visible = true;
  frmMain.lblBanner.Caption = PageBanners[static_cast<std::size_t>(to)];
}

std::int16_t pageOf(std::string_view key) {
  for (std::int16_t page = 0; page < static_cast<std::int16_t>(pageCount); ++page) {
    if (key == PageBanners[static_cast<std::size_t>(page)]) return page;
  }
  return emailPage;
}

void restoreDesignSize(Program& program) {
  program.frmMain.State = WindowState::Normal;
  program.frmMain.restoreSize.raise();
}

/// The buttons that need an account.
void enableAccountButtons(Program& program, bool enabled) {
  MainWindow& frmMain = program.frmMain;
  for (const auto* key : {"EmailNew", "EmailCheck"}) frmMain.tbrEmail[key].Enabled = enabled;
  for (const auto* key : {"AcntDelete", "AcntTest"}) frmMain.tbrAcnts[key].Enabled = enabled;
  if (!enabled) EnableMessageActions(program, false);
  frmMain.lvwEmail.Enabled = enabled;
  for (MenuEntry* entry :
       {&frmMain.mnuTrayRunClient, &frmMain.mnuTrayCheckAll, &frmMain.mnuTrayNewMessage, &frmMain.mnuTrayAutoCheck,
        &frmMain.mnuTraySounds, &frmMain.mnuTrayOptions, &frmMain.mnuTrayMenuColours}) {
    entry->Enabled = enabled;
  }
}

}  // namespace

void ShowPage(Program& program, std::int16_t page) {
  if (program.CurrentPage == emailPage || program.TestInProgress) return;
  const std::int16_t showing = page == emailPage ? program.CurrentPage : emailPage;
  switchPage(program, showing, page);
}

void SetAccountState(Program& program) {
  if (program.accounts.AcntNum() == 0) {
    ShowNoAccountState(program);
    return;
  }
  MainWindow& frmMain = program.frmMain;
  frmMain.fraNoAcntsBanner.Visible = false;
  frmMain.fraAcnt.Visible = true;
  for (Toolbar* bar : {&frmMain.tbrEmail, &frmMain.tbrAcnts}) bar->Enabled = true;
  enableAccountButtons(program, true);
  for (const std::size_t bar : {helpBar, closeBar, checkAllBar, startClientBar, accountsHelpBar, rulesHelpBar}) {
    frmMain.tbrButtons[bar].Enabled = true;
  }
}

void ShowNoAccountState(Program& program) {
  MainWindow& frmMain = program.frmMain;
  frmMain.fraNoAcntsBanner.Visible = program.CurrentPage < optionsPage;
  frmMain.fraAcnt.Visible = false;  // the banner stands for it
  enableAccountButtons(program, false);
  frmMain.tbrEmail["EmailSpam"].Enabled = false;
  for (const std::size_t bar : {closeBar, checkAllBar}) frmMain.tbrButtons[bar].Enabled = false;
}

void ShowNoAccounts(Program& program) {
  MainWindow& frmMain = program.frmMain;
  program.accounts.BlankAccountRow();
  for (TabStrip* strip : {&frmMain.TabStripEmail, &frmMain.TabStripAcnts}) strip->Add("", "MailNo");
  program.AcntLastShown = 0;
  program.listCounts = {};
  frmMain.lvwEmail.EmptyText = "";
  frmMain.lvwEmail.Clear();
  frmMain.StatusBar.Panels(1).Text = "No Accounts have been created...";
  for (const int number : {2, 3}) frmMain.StatusBar.Panels(number).Text = "";
  frmMain.StatusBar.Panels(2).Picture = "";
  frmMain.StatusBar.Panels(4).Text = program.NextCheckText;
  ShowAccount(program, 0);
  ShowNoAccountState(program);
}

/// A check brings the Email page forward, whichever page the user has chosen.
void ShowHelp(Program& program) {
  const auto& pages = program.frmMain.fraMain;
  const auto showing = std::find_if(pages.begin(), pages.end(), [](const Frame& page) { return page.Visible.get(); });
  program.platform.showHelp(helpContexts.at(static_cast<std::size_t>(showing - pages.begin())));
}

void GoToPage(Program& program, std::int16_t page) {
  switchPage(program, std::exchange(program.CurrentPage, page), page);
  program.frmMain.fraNoAcntsBanner.Visible = page < optionsPage && program.accounts.AcntNum() == 0;
}

void tbrMainButtons_ButtonClick(Program& program, const Button& button) {
  if (button.Key == "Size") {
    restoreDesignSize(program);
    return;
  }
  if (button.Key == "Quit") {
    QuitApplication(program);
    return;
  }
  GoToPage(program, pageOf(button.Key));
}

void tbrButtons_ButtonClick(Program& program, const Button& button) {
  if (button.Key == "StopRetrieval") program.StopRequested = true;
  if (button.Key == "CheckAll") CheckAllAccounts(program);
  if (button.Key == "Close") CloseToTray(program);
  if (button.Key == "StartEmailClient") StartClientProgram(program);
  if (button.Key == "Help") ShowHelp(program);
  if (button.Key == "PauseStartupCheck") ToggleStartUpPause(program);
  if (button.Key == "SaveAccount") SaveAccount(program);
  if (button.Key == "Cancel" && program.CurrentPage == accountsPage) ShowAccount(program, program.accounts.AcntCurrent);
}

}  // namespace velmora
