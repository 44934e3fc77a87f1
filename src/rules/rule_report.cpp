#include "rules/rule_report.h"

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

#include "accounts/decisions/account_list.h"
#include "app/interface_state.h"
#include "app/program.h"
#include "checking/auto_check.h"
#include "checking/check_cycle.h"
#include "checking/deletion.h"
#include "messages/email_page.h"
#include "messages/message_list.h"
#include "rules/decisions/rule_report_texts.h"

namespace velmora {

namespace {

/// The help's topic of rules.
constexpr int rulesHelp = 150;

/// What stands behind a tab.
struct Side {
  const char* tab;
  std::int16_t AccountState::*marks;
  std::int16_t RuleReportWindow::*accounts;
  Label RuleReportWindow::*label;
  Image RuleReportWindow::*image;
  const char* nothing;
  bool spam;
};

/// In the order of the tabs.
constexpr std::array<Side, 2> sides = {
    {{"Delete from Server", &AccountState::AcntDeleteCount, &RuleReportWindow::DeleteAccounts,
      &RuleReportWindow::lblRuleDelete, &RuleReportWindow::imgRuleDelete, "No Messages to Delete", false},
     {"Mark as Spam", &AccountState::AcntSpamCount, &RuleReportWindow::SpamAccounts, &RuleReportWindow::lblRuleSpam,
      &RuleReportWindow::imgRuleSpam, "No Spam Messages to Delete", true}}};

bool isCurrent(const RuleReportWindow& window, const Side& side) { return window.CurrentTab == side.tab; }

void setCanDelete(Program& program, bool canDelete) {
  program.frmRuleReport.CanDelete = canDelete;
  SetInterfaceState(program);
}

void TabStripRuleReport_Click(Program& program) {
  RuleReportWindow& window = program.frmRuleReport;
  window.CurrentTab = window.TabStripRuleReport.Tabs(window.TabStripRuleReport.SelectedItem()).Caption;
  for (const Side& side : sides) {
    const bool current = isCurrent(window, side);
    (window.*side.label).Visible = current;
    (window.*side.image).Visible = current;
    if (current) setCanDelete(program, window.*side.accounts > 0);
  }
}

void fill(Program& program) {
  RuleReportWindow& window = program.frmRuleReport;
  std::int16_t most = 0;
  for (const Side& side : sides) {
    const auto marked = markedAccounts(program.accounts, side.marks, side.nothing);
    window.*side.accounts = marked.count;
    (window.*side.label).Caption = marked.text;
    most = std::max(most, marked.count);
  }
  window.LabelLines = accountListLines(most);
  window.Caption = program.AppTitle + " - Rule Report Notification";
  window.lblRuleReport.Caption = "Your Rules indicate the following Account(s) have messages that match your criteria.";
}

void runTimer(RuleReportWindow& window, bool on) {
  Button& button = window.tbrRuleReport["Timer"];
  window.tmrRuleReport.Enabled = on;
  button.Tag = on ? "On" : "Off";
  button.Caption = on ? "Stop Timer   " : "Start Timer  ";
}

void startCountDown(Program& program) {
  RuleReportWindow& window = program.frmRuleReport;
  window.countDown.Begin(program.rules.live.Time);
  runTimer(window, true);
}

void frmRuleReport_Load(Program& program) {
  RuleReportWindow& window = program.frmRuleReport;
  program.frmRuleReport.RuleReportOpen = true;
  SuspendAutoCheck(program, TimerAction::Suspend);
  if (program.frmMessage.AutoMessageOpen) program.frmMessage.AlwaysOnTop = false;
  fill(program);
  window.TabStripRuleReport.SelectTab(1);
  TabStripRuleReport_Click(program);
  startCountDown(program);
}

void tmrRuleReport_Timer(Program& program) {
  if (!program.frmRuleReport.countDown.GoOn(program.rules.live.Time)) frmRuleReport_Unload(program);
}

/// The list has just been filled, so that no row is selected yet.
void selectMarked(Program& program, std::int16_t account) {
  std::int32_t row = 0;
  for (const MailMessage& message : messagesOf(program, account)) {
    ++row;
    if (message.Delete) program.frmMain.lvwEmail.Select(row);
  }
}

/// Messages to delete go by way of a selection, spam by its marks.
void deleteSide(Program& program, const Side& side) {
  for (const std::int16_t account : program.accounts.numbers()) {
    if (program.accounts[account].*side.marks < 1) continue;
    ShowTabAnew(program, account);
    if (!side.spam) selectMarked(program, account);
    DeleteMessages(program, account, side.spam, Confirmation::Never);
    program.accounts[account].*side.marks = 0;
  }
  program.frmRuleReport.*side.accounts = 0;
  (program.frmRuleReport.*side.label).Caption = side.nothing;
}

/// What the window's caution says: nothing is asked. What a check under the open window has marked since goes too.
void DeleteNow(Program& program, const Side& side) {
  const std::int16_t current = program.accounts.AcntCurrent;
  try {
    deleteSide(program, side);
  } catch (const std::exception&) {
    program.platform.MsgBox(deletionTrouble(program.AppTitle));
  }
  if (isCurrent(program.frmRuleReport, side)) setCanDelete(program, false);
  ShowTabAnew(program, current);
}

const Side& currentSide(const RuleReportWindow& window) {
  return *std::find_if(sides.begin(), sides.end(), [&window](const Side& side) { return isCurrent(window, side); });
}

/// The side is the one that was in front at the press: another one may come there while the interface is disabled, and
/// the window may close. Auto Check waits in any case, as something may have set it going under the open window; if the
/// window has closed meanwhile, it has left it to this to let Auto Check go on.
void tbrDeleteNow_Click(Program& program) {
  const Side& side = currentSide(program.frmRuleReport);
  SuspendAutoCheck(program, TimerAction::Suspend);
  program.connection.StopRequested = false;
  SetCheckingInterface(program, Activity::Deleting);
  if (program.frmRuleReport.RuleReportOpen) DeleteNow(program, side);
  SetCheckingInterface(program, Activity::Idle);
  if (program.frmRuleReport.RuleReportOpen) {
    program.frmRuleReport.activate.raise();
  } else {
    SuspendAutoCheck(program, TimerAction::Restore);
  }
}

void tbrRuleReport_ButtonClick(Program& program, const Button& button) {
  if (button.Key == "Timer") runTimer(program.frmRuleReport, button.Tag != "On");
  if (button.Key == "DeleteNow") tbrDeleteNow_Click(program);
  if (button.Key == "Exit") frmRuleReport_Unload(program);
}

}  // namespace

void ConnectRuleReport(Program& program) {
  RuleReportWindow& window = program.frmRuleReport;
  for (const Side& side : sides) window.TabStripRuleReport.Add(side.tab, "");
  window.TabStripRuleReport.Click = [&program] { TabStripRuleReport_Click(program); };
  window.tbrRuleReport.ButtonClick = [&program](Button& button) { tbrRuleReport_ButtonClick(program, button); };
  window.tmrRuleReport.Tick = [&program] { tmrRuleReport_Timer(program); };
  window.Help = [&program] { program.platform.showHelp(rulesHelp); };
  window.Activate = [&window] { window.AlwaysOnTop = true; };
  window.Close = [&program] { frmRuleReport_Unload(program); };
}

void ShowRuleReport(Program& program) {
  if (program.activity == Activity::Ending || program.frmRuleReport.RuleReportOpen) return;
  if (!wantsRuleReport(program.accounts, program.rules.live)) return;
  frmRuleReport_Load(program);
  program.frmRuleReport.AlwaysOnTop = true;
  program.frmRuleReport.Visible = true;
}

void frmRuleReport_Unload(Program& program) {
  if (!std::exchange(program.frmRuleReport.RuleReportOpen, false)) return;
  program.frmRuleReport.tmrRuleReport.Enabled = false;
  program.frmRuleReport.Visible = false;
  LetAutoCheckGoOn(program);
  if (program.frmMessage.AutoMessageOpen) program.frmMessage.AlwaysOnTop = true;
}

}  // namespace velmora
