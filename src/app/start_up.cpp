#include "app/start_up.h"

#include <array>

#include "accounts/accounts_page.h"
#include "accounts/load_accounts.h"
#include "accounts/tab_drag.h"
#include "app/first_use.h"
#include "app/interface_state.h"
#include "app/move_settings.h"
#include "app/pages.h"
#include "app/press_shortcut.h"
#include "app/program.h"
#include "app/shut_down.h"
#include "app/status_bar.h"
#include "app/tray.h"
#include "checking/auto_check.h"
#include "checking/check_notification.h"
#include "checking/decisions/schedule.h"
#include "checking/fetch_original.h"
#include "checking/follow_machine.h"
#include "checking/pop_session.h"
#include "checking/start_up_check.h"
#include "messages/message_list.h"
#include "messages/preview.h"
#include "messages/sorting.h"
#include "options/button_style.h"
#include "options/client_and_sound.h"
#include "options/menu_colours.h"
#include "rules/rename_rules.h"
#include "rules/rule_report.h"
#include "rules/rules_page.h"
#include "rules/save_rules.h"

namespace velmora {

namespace {

bool startsInTray(const Program& program, Command command) {
  if (command == Command::Hide) return true;
  if (command == Command::Show || command == Command::CheckAll) return false;
  return program.options.MinimizeStartUp == 1;
}

void showOrHide(Program& program, Command command) {
  if (startsInTray(program, command)) {
    program.frmMain.State = WindowState::Minimised;
    GoToTray(program);
  } else {
    program.frmMain.Visible = true;
  }
}

/// Settings that can't be kept are no new installation's.
bool isFirstRun(SettingsStore& settings) {
  return fromText<std::int16_t>(settings.GetSetting(settingsSection, "FirstUse", "0"), 0) == 0 && !settings.Keep();
}

/// A new installation starts at logon until the user says otherwise.
void firstRun(Program& program) {
  ShowFirstUse(program);
  program.options.RunStartUp = program.optionsPage.logonEntry = 1;
  ChangeOptions(program, [](Options& edit) { edit.RunStartUp = 1; });
  SettingsStore& settings = program.platform.settings();
  settings.SaveSetting(optionsSection, "RunStartUp", "1");
  program.platform.SetRunAtStartUp();
  settings.SaveSetting(settingsSection, "FirstUse", "1");
  settings.Keep();
}

void connectWindow(Program& program) {
  MainWindow& frmMain = program.frmMain;
  frmMain.tbrMainButtons.ButtonClick = [&program](Button& button) { tbrMainButtons_ButtonClick(program, button); };
  for (Toolbar& bar : frmMain.tbrButtons) {
    bar.ButtonClick = [&program](Button& button) { tbrButtons_ButtonClick(program, button); };
  }
  frmMain.Help = [&program] { ShowHelp(program); };
  NameKeys(program);
  frmMain.KeyPress = [&program](const Shortcut& shortcut) { PressShortcut(program, shortcut); };
  frmMain.Resize = [&program] { Form_Resize(program); };
  frmMain.Close = [&program] { Form_Unload(program); };
  frmMain.tmrStatusBar.Tick = [&program] { tmrStatusBar_Timer(program); };
  frmMain.tmrMailTime.Tick = [&program] { tmrMailTime_Timer(program); };
  frmMain.tmrMailStartUp.Tick = [&program] { tmrMailStartUp_Timer(program); };
  frmMain.tmrRetrieveMessage.Tick = [&program] { tmrRetrieveMessage_Timer(program); };
  ConnectEmailPage(program);
  ConnectAccountsPage(program);
  ConnectRulesPage(program);
  ConnectRuleFile(program);
  ConnectTabDrag(program);
  ConnectPreview(program);
  ConnectPrinting(program);
  ConnectFetchOriginal(program);
  ConnectRuleReport(program);
  ConnectMessage(program);
  ConnectFirstUse(program);
  ConnectTray(program);
  ConnectOptionsPage(program);
  ConnectMoveSettings(program);
  ConnectClientAndSound(program);
  frmMain.StatusBar.MouseMove = [&program](std::int32_t x, std::int32_t y) { ShowPanelTip(program, x, y); };
}

/// What every showing of the window has in common.
void ArrangeMainWindow(Program& program) {
  MainWindow& frmMain = program.frmMain;
  for (std::size_t page = 1; page < pageCount; ++page) frmMain.fraMain[page].Visible = false;
  frmMain.lblNoAcntsBanner.Caption = "No Accounts - Please use Add Accounts to create an Account";
  for (auto& column : frmMain.lvwEmail.Columns) column.Picture = "Blank";
  frmMain.lvwEmail.Columns.back().AlignRight = true;
}

}  // namespace

bool Main(Program& program, Command command) {
  if (!program.platform.isOnlyInstance()) return false;
  program.AppTitle = program.platform.applicationTitle();
  program.platform.provideLaunchers();
  Form_Load(program);
  NextAutoCheck(program, extraMinutesAtStart(program.options, program.platform.now()), false);
  ChooseRunningTimer(program);
  WatchMachine(program);
  showOrHide(program, command);
  if (isFirstRun(program.platform.settings())) firstRun(program);
  BeginStartUpCountdown(program);
  return true;
}

void Form_Load(Program& program) {
  program.connection.popEvents = makePopEvents(program);
  CreatePopClient(program);
  program.frmMain.Caption = program.AppTitle;
  AddToTray(program);
  ArrangeMainWindow(program);
  const auto [count, isSound] = Accounts::storedCount(program.platform.settings());
  if (!isSound) program.platform.settings().Protect();
  loadOptions(program.platform.settings(), OptionField::Read::AtStartUp, program.options);
  LoadMenuColours(program);
  program.optionsPage.logonEntry = program.options.RunStartUp;
  SetColumnWidths(program);
  StartSorting(program);
  program.autoCheck.CurrentTime = checkTime(program.platform.now());
  LoadAccounts(program, count);
  ShowClock(program);
  StartRules(program);
  connectWindow(program);
  FillRuleAccounts(program);
  LoadRulePage(program);
  LoadOptionsPage(program);
  ApplyButtonStyle(program);
  ShowAccount(program, program.accounts.AcntCurrent);
  program.frmMain.lblBanner.Caption = PageBanners[emailPage];
  ShowAccountMessages(program, program.accounts.AcntCurrent);
  SetInterfaceState(program);
  program.frmMain.cmdTakeFocus.SetFocus();
}

}  // namespace velmora
