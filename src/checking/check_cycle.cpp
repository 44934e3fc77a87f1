#include "checking/check_cycle.h"

#include <utility>

#include "app/pages.h"
#include "app/program.h"
#include "checking/auto_check.h"
#include "checking/check_notification.h"
#include "checking/decisions/check_texts.h"
#include "checking/decisions/schedule.h"
#include "checking/pop_session.h"
#include "checking/start_up_check.h"
#include "messages/email_page.h"
#include "messages/message_list.h"
#include "rules/rule_report.h"

namespace velmora {

namespace {

void noteCheckTime(Program& program, std::int16_t account) {
  const DateTime now = program.platform.now();
  const std::string time = timeText(now);
  program.accounts[account].AcntLastCheckTime = time;
  program.accounts[account].AcntLastCheckText = "Checked at: " + time;
  program.accounts[0].AcntLastCheckText =
      "Checked: " + time + " on " + formatDateTime(now, "mmm d/yy", program.platform.monthNames());
}

/// What opens both checks that the user asks for.
void beginUsersCheck(Program& program) {
  EndStartUpCountdown(program);
  SuspendAutoCheck(program, TimerAction::Suspend);
  program.NoCheckPostponed = false;
  program.StopRequested = false;
  SetCheckingInterface(program, false, true);
}

/// What closes them.
void endUsersCheck(Program& program) {
  program.StopRequested = false;
  program.frmMain.Pointer = MousePointer::Default;
  ReportIncompleteAccounts(program);
  ShowRuleReport(program);
}

/// The time of the next check is worked out anew behind each account of a walk, always as behind the first. Else the
/// second one would take the end of the quiet period, which the first has just put that check off to, for reached.
void checkInWalk(Program& program, std::int16_t number, bool postponed) {
  program.NoCheckPostponed = postponed;
  CheckAccount(program, number);
}

/// Returns whether anything was checked, which a stop counts as.
bool walkAllAccounts(Program& program) {
  bool checked = false;
  for (std::int16_t number = 1; number <= program.accounts.AcntNum(); ++number) {
    if (program.StopRequested) {
      program.frmMain.ProgressBar.Visible = false;
      return true;
    }
    program.frmMain.TabStripEmail.SelectTab(number);
    if (program.accounts[number].AcntEnabled == 0) continue;
    checkInWalk(program, number, false);
    checked = true;
  }
  return checked;
}

void beginTotals(Program& program) {
  program.AccountInfoLines = 0;
  program.TotalMessages = 0;
  program.TotalNew = 0;
}

void followWithTab(Program& program, std::int16_t number) {
  if (program.frmMain.State == WindowState::Minimised) return;
  program.frmMain.TabStripEmail.SelectTab(number);
  TabStripEmail_Click(program);
}

/// Checks the enabled accounts one by one and notes a line of text for each. What the disabled ones have from before
/// counts as found, too.
WalkFindings walkEnabledAccounts(Program& program, std::string& lines, bool postponed) {
  WalkFindings found;
  for (std::int16_t number = 1; number <= program.accounts.AcntNum(); ++number) {
    if (program.accounts[number].AcntEnabled == 1) {
      if (program.StopRequested) {
        program.frmMain.ProgressBar.Visible = false;
        break;
      }
      followWithTab(program, number);
      checkInWalk(program, number, postponed);
      lines += "      " + program.accounts[number].AcntStatusText + "\r\n";
      ++program.AccountInfoLines;
    }
    found.anyMessages |= program.accounts[number].AcntHasMessages;
    found.anyNew |= program.accounts[number].AcntHasNew;
  }
  return found;
}

WalkFindings timedWalk(Program& program, bool atStartUp) {
  beginTotals(program);
  const std::int16_t current = program.accounts.AcntCurrent;
  SetCheckingInterface(program, false, true);
  std::string lines;
  // The check at start-up is none that was put off.
  const bool postponed = !atStartUp && program.NoCheckPostponed;
  WalkFindings found = walkEnabledAccounts(program, lines, postponed);
  program.AccountInfoText = "Account Information:\r\n" + lines;
  found.TotalMessages = program.TotalMessages;
  found.TotalNew = program.TotalNew;
  if (atStartUp && program.options.UseInterval == 1) {
    program.NoCheckPostponed = postponed;
    NextAutoCheck(program, 1);
    program.frmMain.StatusBar.Panels(4).Text = program.NextCheckText;
  }
  ShowAccountAgain(program, current);
  SetCheckingInterface(program, true, true);
  return found;
}

void tellOfWalk(Program& program, const WalkFindings& found) {
  ReportIncompleteAccounts(program);
  AnnounceCheck(program, found);
  ShowRuleReport(program);
}

}  // namespace

void CheckAccount(Program& program, std::int16_t account) {
  program.accounts[account].AcntChecked = true;
  program.frmMain.lvwEmail.EmptyText = "Checking...";
  program.frmMain.lvwEmail.Clear();
  RetrieveAccount(program, account);
  // The retrieval blocks while the event loop turns, so no row is held across it.
  Accounts::Row& row = program.accounts[account];
  row.AcntStatusText = statusTextAfterCheck(row, program.StopRequested);
  noteCheckTime(program, account);
  if (program.options.UseInterval != 1) {
    program.NextCheckText = autoCheckOff;
  } else if (row.AcntEnabled != 0) {
    NextAutoCheck(program, 0);
  }
  ShowAccountMessages(program, account);
}

void CheckAllAccounts(Program& program) {
  const std::int16_t current = program.accounts.AcntCurrent;
  beginUsersCheck(program);
  const bool checked = walkAllAccounts(program);
  program.accounts.AcntCurrent = current;
  if (current > 0) program.frmMain.TabStripEmail.SelectTab(current);
  SetCheckingInterface(program, true, true);
  PlayCheckSound(program, 0);
  SuspendAutoCheck(program, TimerAction::Restore);
  if (!checked) program.platform.MsgBox(nothingCheckedNotice(program.AppTitle));
  endUsersCheck(program);
}

void CheckCurrentAccount(Program& program) {
  beginUsersCheck(program);
  CheckAccount(program, program.accounts.AcntCurrent);
  SetCheckingInterface(program, true, true);
  PlayCheckSound(program, program.accounts.AcntCurrent);
  SuspendAutoCheck(program, TimerAction::Restore);
  endUsersCheck(program);
}

void AutoCheckAccounts(Program& program) {
  EndStartUpCountdown(program);
  tellOfWalk(program, timedWalk(program, false));
}

void StartUpCheckAccounts(Program& program) {
  SuspendAutoCheck(program, TimerAction::Suspend);
  const WalkFindings found = timedWalk(program, true);
  SuspendAutoCheck(program, TimerAction::Restore);
  tellOfWalk(program, found);
}

void SetCheckingInterface(Program& program, bool enabled, bool showStop) {
  MainWindow& frmMain = program.frmMain;
  Toolbar& stop = frmMain.tbrButtons[stopRetrievalBar];
  frmMain.tbrButtons[pauseStartUpBar].Visible = false;
  if (enabled) {
    frmMain.tmrRetrieveMessage.Enabled = false;
    stop.Visible = false;
    ShowPage(program, program.CurrentPage);
  } else {
    stop.Buttons.front().Caption = "Stop Retrieval      ";
    stop.Visible = showStop;
    ShowPage(program, emailPage);
  }
  for (Frame* frame : {&frmMain.fraMainButtons, &frmMain.fraEmailToolBar, &frmMain.fraAcntToolBar, &frmMain.fraAcnt}) {
    frame->Enabled = enabled;
  }
  for (TabStrip* strip : {&frmMain.TabStripEmail, &frmMain.TabStripAcnts}) strip->Enabled = enabled;
  program.frmPreview.tbrButtons.Enabled = enabled;
  FollowInRuleReport(program);
  for (const std::size_t bar : {helpBar, closeBar, checkAllBar, startClientBar}) {
    frmMain.tbrButtons[bar].Enabled = enabled;
  }
  for (MenuEntry* entry : {&frmMain.mnuTrayRunClient, &frmMain.mnuTrayCheckAll, &frmMain.mnuTrayNewMessage,
                           &frmMain.mnuTraySounds, &frmMain.mnuTrayOptions, &frmMain.mnuTrayMenuColours,
                           &frmMain.mnuTrayUpdates, &frmMain.mnuTrayAbout, &frmMain.mnuTrayHelp}) {
    entry->Enabled = enabled;
  }
  program.platform.yield();
}

void ReportIncompleteAccounts(Program& program) {
  int incomplete = 0;
  for (std::int16_t number = 1; number <= program.accounts.AcntNum(); ++number) {
    if (std::exchange(program.accounts[number].AcntIncomplete, false)) ++incomplete;
  }
  if (incomplete == 0) return;
  program.platform.MsgBox(incompleteWarning(program.AppTitle, incomplete, program.IncompleteAccounts));
  program.IncompleteAccounts.clear();
}

}  // namespace velmora
