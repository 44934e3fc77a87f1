#include "checking/auto_check.h"

#include "app/program.h"
#include "app/shut_down.h"
#include "app/status_bar.h"
#include "app/tray.h"
#include "checking/check_cycle.h"
#include "checking/decisions/schedule.h"
#include "checking/follow_machine.h"
#include "messages/email_page.h"

namespace velmora {

void NextAutoCheck(Program& program, int extraMinutes, bool postponed) {
  const NextCheck next = nextAutoCheck(program.options, program.platform.now(), extraMinutes, postponed);
  program.autoCheck.NextCheckText = program.autoCheck.SavedNextCheckText = next.NextCheckText;
  program.autoCheck.NextCheckTime = program.autoCheck.SavedNextCheckTime = next.NextCheckTime;
  program.autoCheck.NoCheckPostponed = next.NoCheckPostponed;
}

/// Auto Check can be switched on while a check, a deletion or a dialog is under way. What is due then waits for its
/// end.
void tmrMailTime_Timer(Program& program) {
  ShowClock(program);
  ShowUntoldFailures(program);
  if (program.accounts.AcntNum() == 0 || program.activity == Activity::Ending) return;
  program.autoCheck.CurrentTime = checkTime(program.platform.now());
  const bool mayBegin = program.activity == Activity::Idle && program.dialogs.count == 0;
  const bool due = isDue(program.options, program.autoCheck.NextCheckTime, program.platform.now());
  if (mayBegin && MachineLetsCheck(program, due)) {
    program.connection.StopRequested = false;
    AutoCheckAccounts(program);
    program.frmMain.Pointer = MousePointer::Default;
  }
  UpdateTrayIcon(program);
}

void tmrStatusBar_Timer(Program& program) {
  ShowClock(program);
  ShowUntoldFailures(program);
  UpdateTrayIcon(program);
}

void SuspendAutoCheck(Program& program, TimerAction action) {
  if (program.options.UseInterval != 1) return;
  program.frmMain.tmrMailTime.Enabled = action == TimerAction::Restore;
  program.frmMain.tmrStatusBar.Enabled = action == TimerAction::Suspend;
}

void LetAutoCheckGoOn(Program& program) {
  if (program.activity == Activity::Idle && !program.frmPreview.PreviewOpen) {
    SuspendAutoCheck(program, TimerAction::Restore);
  }
}

void ChooseRunningTimer(Program& program) {
  MainWindow& frmMain = program.frmMain;
  const bool autoCheck = program.options.UseInterval == 1;
  frmMain.tmrMailTime.Enabled = autoCheck;
  frmMain.tmrStatusBar.Enabled = !autoCheck;
  frmMain.mnuTrayAutoCheck.Caption = autoCheck ? "&Auto Check - On|#AutoCheckOn" : "&Auto Check - Off|#AutoCheckOff";
  if (!autoCheck) program.autoCheck.NextCheckText = autoCheckOff;
  frmMain.StatusBar.Panels(4).Text = program.autoCheck.NextCheckText;
}

}  // namespace velmora
