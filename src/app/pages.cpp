#include "app/pages.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "accounts/accounts_page.h"
#include "accounts/save_account.h"
#include "app/interface_state.h"
#include "app/program.h"
#include "app/shut_down.h"
#include "app/tray.h"
#include "checking/check_cycle.h"
#include "checking/start_up_check.h"
#include "messages/email_client.h"
#include "messages/email_page.h"
#include "messages/message_list.h"
#include "options/save_options.h"
#include "rules/edit_rules.h"
#include "rules/rule_fits.h"
#include "rules/rules_page.h"

namespace velmora {

namespace {

/// The help's topic of each page but the Options page, whose sections have one each.
constexpr std::array<int, pageCount> helpContexts = {130, 140, 150, 200};
constexpr int helpOfSection = 10;

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
  TabStrip& strip = program.frmMain.TabStripAcnts;
  const std::int16_t current = program.accounts.AcntCurrent;
  if (strip.SelectedItem() != current) {
    strip.SelectTab(current);  // which shows the account
  } else if (!program.unsaved.AcntDirty) {
    ShowAccount(program, current);
  }
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

void enterRulesPage(Program& program) {
  program.rulePage.putOff = false;
  if (!program.unsaved.RulesDirty) LoadRulePage(program);
  program.frmMain.lstRules.SetFocus();
}

void cancelOptions(Program& program) {
  LoadOptionsPage(program);
  program.frmMain.TreeView.SetFocus();
}

void cancelOnPage(Program& program) {
  if (program.CurrentPage == accountsPage) ShowAccount(program, program.accounts.AcntCurrent);
  if (program.CurrentPage == rulesPage && !program.rulePage.asking) CancelRules(program);
  if (program.CurrentPage == optionsPage && !program.optionsPage.asking) cancelOptions(program);
}

}  // namespace

void ShowPage(Program& program, std::int16_t page) {
  const std::int16_t showing = page == emailPage ? program.CurrentPage : emailPage;
  switchPage(program, showing, page);
}

void ShowNoAccounts(Program& program) {
  MainWindow& frmMain = program.frmMain;
  program.accounts.BlankAccountRow();
  for (TabStrip* strip : {&frmMain.TabStripEmail, &frmMain.TabStripAcnts}) strip->Add("", "MailNo");
  program.list = {};
  frmMain.lvwEmail.EmptyText = "";
  frmMain.lvwEmail.Clear();
  frmMain.StatusBar.Panels(1).Text = "No Accounts have been created...";
  for (const int number : {2, 3}) frmMain.StatusBar.Panels(number).Text = "";
  frmMain.StatusBar.Panels(2).Picture = "";
  frmMain.StatusBar.Panels(4).Text = program.autoCheck.NextCheckText;
  ShowAccount(program, 0);
}

/// A check brings the Email page forward, whichever page the user has chosen.
void ShowHelp(Program& program) {
  const auto& pages = program.frmMain.fraMain;
  const auto showing = std::find_if(pages.begin(), pages.end(), [](const Frame& page) { return page.Visible.get(); });
  const auto page = static_cast<std::size_t>(showing - pages.begin());
  const int section = page == optionsPage ? program.optionsPage.OptionsPage : 0;
  program.platform.showHelp(helpContexts.at(page) + section * helpOfSection);
}

void GoToPage(Program& program, std::int16_t page) {
  const std::int16_t former = std::exchange(program.CurrentPage, page);
  OptionsDirtyCheck(program);  // files may have come and gone since the page was last seen
  switchPage(program, former, page);
  if (page == rulesPage && former != rulesPage) enterRulesPage(program);
  if (page == optionsPage) program.frmMain.TreeView.SetFocus();
  CountRuleFits(program);
  SetInterfaceState(program);
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
  if (button.Key == "StopRetrieval") StopConnection(program);
  if (button.Key == "CheckAll") CheckAllAccounts(program);
  if (button.Key == "Close") CloseToTray(program);
  if (button.Key == "StartEmailClient") StartClientProgram(program);
  if (button.Key == "Help") ShowHelp(program);
  if (button.Key == "PauseStartupCheck") ToggleStartUpPause(program);
  if (button.Key == "SaveAccount") SaveAccount(program);
  if (button.Key == "SaveRules" && !program.rulePage.asking) SaveRules(program);
  if (button.Key == "SaveOptions" && !program.optionsPage.asking) SaveOptions(program);
  if (button.Key == "Cancel") cancelOnPage(program);
}

}  // namespace velmora
