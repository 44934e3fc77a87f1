#include "app/pages.h"

#include <array>
#include <string_view>
#include <utility>

#include "app/program.h"
#include "app/shut_down.h"
#include "checking/check_cycle.h"
#include "messages/email_client.h"
#include "messages/message_list.h"
#include "messages/preview.h"

namespace velmora {

namespace {

/// The help's topic of each page.
constexpr std::array<int, pageCount> helpContexts = {130, 140, 150, 260};

Frame& frameOf(Program& program, std::int16_t page) { return program.frmMain.fraMain[static_cast<std::size_t>(page)]; }

void selectCurrentTab(TabStrip& strip, std::int16_t account) {
  if (account > 0) strip.SelectTab(account);
}

/// Puts one page in place of another.
void switchPage(Program& program, std::int16_t from, std::int16_t to) {
  MainWindow& frmMain = program.frmMain;
  frameOf(program, from).Visible = false;
  if (to == emailPage) selectCurrentTab(frmMain.TabStripEmail, program.accounts.AcntCurrent);
  if (to == accountsPage) selectCurrentTab(frmMain.TabStripAcnts, program.accounts.AcntCurrent);
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
  if (!enabled) EnableMessageActions(program, false);
  frmMain.lvwEmail.Enabled = enabled;
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
  frmMain.tbrEmail.Enabled = true;
  enableAccountButtons(program, true);
  for (const std::size_t bar : {helpBar, closeBar, checkAllBar, startClientBar, accountsHelpBar, rulesHelpBar}) {
    frmMain.tbrButtons[bar].Enabled = true;
  }
}

void ShowNoAccountState(Program& program) {
  MainWindow& frmMain = program.frmMain;
  frmMain.fraNoAcntsBanner.Visible = true;
  enableAccountButtons(program, false);
  frmMain.tbrEmail["EmailSpam"].Enabled = false;
  for (const std::size_t bar : {closeBar, checkAllBar}) frmMain.tbrButtons[bar].Enabled = false;
}

void ShowHelp(Program& program) {
  program.platform.showHelp(helpContexts[static_cast<std::size_t>(program.CurrentPage)]);
}

void CloseToTray(Program& program) {
  HidePreview(program);
  program.frmMain.State = WindowState::Minimised;
  program.frmMain.Visible = false;
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
  const std::int16_t page = pageOf(button.Key);
  switchPage(program, std::exchange(program.CurrentPage, page), page);
  program.frmMain.fraNoAcntsBanner.Visible = page < optionsPage && program.accounts.AcntNum() == 0;
}

void tbrButtons_ButtonClick(Program& program, const Button& button) {
  if (button.Key == "StopRetrieval") program.StopRequested = true;
  if (button.Key == "CheckAll") CheckAllAccounts(program);
  if (button.Key == "Close") CloseToTray(program);
  if (button.Key == "StartEmailClient") StartClientProgram(program);
  if (button.Key == "Help") ShowHelp(program);
}

}  // namespace velmora
