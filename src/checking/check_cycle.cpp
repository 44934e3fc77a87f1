#include "checking/check_cycle.h"

#include <utility>

#include "app/interface_state.h"
#include "app/pages.h"
#include "app/program.h"
#include "checking/auto_check.h"
#include "checking/check_notification.h"
#include "checking/decisions/check_texts.h"
#include "checking/decisions/schedule.h"
#include "checking/follow_machine.h"
#include "checking/pop_session.h"
#include "checking/start_up_check.h"
#include "messages/email_page.h"
#include "messages/message_list.h"
#include "messages/sorting.h"
#include "rules/rule_fits.h"
#include "rules/rule_report.h"

namespace velmora {

namespace {

void noteCheckTime(Program& program, std::int16_t account) {
  const DateTime now = program.platform.now();
  const std::string time = timeText(now);
  program.accounts[account].AcntLastCheckTime = time;
  program.accounts[account].AcntLastCheckText = "Checked at: " + time;
  program.accounts[0].AcntLastCheckText =
      "Checked: " + time + " on " + formatDateTime(now, "mmm d/yy", program.platform.dateNames());
}

/// One account from start to finish. The outcome is left in the account and on the screen.
///
/// The time of the next check is worked out anew behind each account of a walk, always as behind the first, so that all
/// are told alike whether this check had been put off. Else the second one would take the end of the quiet period,
/// which the first has just put the next check off to, for reached.
void CheckAccount(Program& program, std::int16_t account, bool postponed) {
  program.accounts[account].AcntChecked = true;
  program.frmMain.lvwEmail.EmptyText = "Checking...";
  program.frmMain.lvwEmail.Clear();
  RetrieveAccount(program, account);
  // The retrieval blocks while the event loop turns, so no row is held across it.
  Accounts::Row& row = program.accounts[account];
  row.AcntStatusText = statusTextAfterCheck(row, program.connection.StopRequested);
  noteCheckTime(program, account);
  if (program.options.UseInterval != 1) {
    program.autoCheck.NextCheckText = autoCheckOff;
  } else if (row.AcntEnabled != 0) {
    NextAutoCheck(program, 0, postponed);
  }
  ShowAccountMessages(program, account);
  NoteNews(program, account);
}

/// What opens both checks that the user asks for.
void beginUsersCheck(Program& program) {
  EndStartUpCountdown(program);
  ForgetPutOffCheck(program);
  SuspendAutoCheck(program, TimerAction::Suspend);
  program.autoCheck.NoCheckPostponed = false;
  program.connection.StopRequested = false;
  BeginWalkNotices(program, false);
  program.keyring.refused = false;
  SetCheckingInterface(program, Activity::Checking);
  TidyEntries(program);
}

/// What closes them.
void endUsersCheck(Program& program) {
  program.connection.StopRequested = false;
  program.frmMain.Pointer = MousePointer::Default;
  ReportIncompleteAccounts(program);
  ShowRuleReport(program);
}

/// What is found from then on is another one's.
void backToIdle(Program& program) {
  const WalkNotices notices = takeWalkNotices(program);
  SetCheckingInterface(program, Activity::Idle);
  ShowWalkNotices(program, notices);
}

/// Returns whether anything was checked, which a stop counts as.
bool walkAllAccounts(Program& program) {
  bool checked = false;
  for (const std::int16_t number : program.accounts.numbers()) {
    if (program.connection.StopRequested) {
      program.frmMain.ProgressBar.Visible = false;
      return true;
    }
    program.frmMain.TabStripEmail.SelectTab(number);
    if (program.accounts[number].AcntEnabled == 0) continue;
    CheckAccount(program, number, false);
    checked = true;
  }
  return checked;
}

void beginTotals(Program& program) {
  program.walk.AccountInfoLines = 0;
  program.walk.TotalMessages = 0;
  program.walk.TotalNew = 0;
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
  for (const std::int16_t number : program.accounts.numbers()) {
    if (program.accounts[number].AcntEnabled == 1) {
      if (program.connection.StopRequested) {
        program.frmMain.ProgressBar.Visible = false;
        break;
      }
      followWithTab(program, number);
      CheckAccount(program, number, postponed);
      lines += "      " + program.accounts[number].AcntStatusText + "\r\n";
      ++program.walk.AccountInfoLines;
    }
    found.anyMessages |= program.accounts[number].AcntHasMessages;
    found.anyNew |= program.accounts[number].AcntHasNew;
  }
  return found;
}

WalkFindings timedWalk(Program& program, bool atStartUp) {
  beginTotals(program);
  ForgetPutOffCheck(program);
  BeginWalkNotices(program, true);
  const std::int16_t current = program.accounts.AcntCurrent;
  SetCheckingInterface(program, Activity::Checking);
  std::string lines;
  // The check at start-up is none that was put off.
  const bool postponed = !atStartUp && program.autoCheck.NoCheckPostponed;
  WalkFindings found = walkEnabledAccounts(program, lines, postponed);
  program.walk.AccountInfoText = "Account Information:\r\n" + lines;
  found.TotalMessages = program.walk.TotalMessages;
  found.TotalNew = program.walk.TotalNew;
  if (atStartUp && program.options.UseInterval == 1) {
    NextAutoCheck(program, 1, postponed);
    program.frmMain.StatusBar.Panels(4).Text = program.autoCheck.NextCheckText;
  }
  ShowTabAnew(program, current);
  backToIdle(program);
  return found;
}

void tellOfWalk(Program& program, const WalkFindings& found) {
  ReportIncompleteAccounts(program);
  AnnounceCheck(program, found);
  ShowRuleReport(program);
}

}  // namespace

void CheckAllAccounts(Program& program) {
  const std::int16_t current = program.accounts.AcntCurrent;
  beginUsersCheck(program);
  const bool checked = walkAllAccounts(program);
  program.accounts.AcntCurrent = current;
  if (current > 0) program.frmMain.TabStripEmail.SelectTab(current);
  backToIdle(program);
  PlayCheckSound(program, 0);
  SuspendAutoCheck(program, TimerAction::Restore);
  if (!checked) program.platform.MsgBox(nothingCheckedNotice(program.AppTitle));
  endUsersCheck(program);
}

void CheckCurrentAccount(Program& program) {
  beginUsersCheck(program);
  CheckAccount(program, program.accounts.AcntCurrent, false);
  backToIdle(program);
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

void SetCheckingInterface(Program& program, Activity activity) {
  if (program.activity == Activity::Ending) return;
  MainWindow& frmMain = program.frmMain;
  const std::int16_t shown = shownPage(program.activity, program.CurrentPage);
  program.activity = activity;
  CountRuleFits(program);  // the messages change from now on, or have
  if (activity == Activity::Ending) return;
  if (activity == Activity::Idle) frmMain.tmrRetrieveMessage.Enabled = false;
  frmMain.tbrButtons[stopRetrievalBar].Buttons.front().Caption = "Stop Retrieval      ";
  if (const std::int16_t page = shownPage(activity, program.CurrentPage); page != shown) ShowPage(program, page);
  SetInterfaceState(program);
  FollowSortOptions(program);
  program.platform.yield();
}

std::optional<Question> takeIncompleteWarning(Program& program) {
  int incomplete = 0;
  for (const std::int16_t number : program.accounts.numbers()) {
    if (std::exchange(program.accounts[number].AcntIncomplete, false)) ++incomplete;
  }
  if (incomplete == 0) return std::nullopt;
  return incompleteWarning(program.AppTitle, incomplete, std::exchange(program.walk.IncompleteAccounts, {}));
}

void ReportIncompleteAccounts(Program& program) {
  if (const auto warning = takeIncompleteWarning(program)) program.platform.MsgBox(*warning);
}

}  // namespace velmora
