#include "checking/start_up_check.h"

#include <utility>

#include "app/interface_state.h"
#include "app/program.h"
#include "checking/check_cycle.h"
#include "checking/decisions/schedule.h"
#include "checking/follow_machine.h"
#include "messages/email_page.h"

namespace velmora {

namespace {

void showPaused(Program& program, bool paused) {
  Button& button = program.frmMain.tbrButtons[pauseStartUpBar].Buttons.front();
  button.Caption = paused ? "StartUp: Continue   " : "StartUp: Pause       ";
  button.ToolTipText = paused ? "Continue the StartUp Check Timer" : "Pause the StartUp Check Timer";
  program.frmMain.tmrMailStartUp.Enabled = !paused;
}

void showNoWait(Program& program) {
  if (!std::exchange(program.startUp.StartUpWaits, false)) return;
  program.frmMain.StatusBar.Panels(4).Text = program.autoCheck.NextCheckText;
}

/// The last second is counted once more, as often as it takes.
void waitForNetwork(Program& program) {
  --program.startUp.StartUpSeconds;
  program.startUp.StartUpWaits = true;
  program.startUp.StartUpSecondsLeft = secondsUntilCheck;
  program.frmMain.StatusBar.Panels(4).Text = startUpCheckWaits;
}

void finishCountdown(Program& program) {
  program.frmMain.tmrMailStartUp.Enabled = false;
  program.startUp.StartUpDone = true;
  SetInterfaceState(program);
}

}  // namespace

void BeginStartUpCountdown(Program& program) {
  program.startUp.StartUpPaused = false;
  const bool wanted = program.options.EmailCheckStartUp == 1 && program.accounts.AcntNum() >= 1;
  if (!wanted) {
    finishCountdown(program);
    return;
  }
  program.startUp.StartUpDone = false;
  showPaused(program, false);
  SetInterfaceState(program);
}

/// A deletion that is under way is not overtaken, nor a dialog: the countdown waits for it.
void tmrMailStartUp_Timer(Program& program) {
  if (program.activity != Activity::Idle || program.dialogs.count > 0) return;
  const int delay = program.options.StartUpDelay;
  program.frmMain.StatusBar.Panels(3).Text = countdownText(delay - program.startUp.StartUpSeconds);
  ++program.startUp.StartUpSeconds;
  if (program.startUp.StartUpSeconds <= delay) return;
  if (waitsForNetwork(program)) return waitForNetwork(program);
  if (program.startUp.StartUpSecondsLeft > 0) {
    --program.startUp.StartUpSecondsLeft;
    --program.startUp.StartUpSeconds;
    return;
  }
  showNoWait(program);
  finishCountdown(program);
  program.connection.StopRequested = false;
  StartUpCheckAccounts(program);
  program.frmMain.Pointer = MousePointer::Default;
}

/// The panel shows the last account, whichever one is on the screen.
void EndStartUpCountdown(Program& program) {
  if (program.startUp.StartUpDone) return;
  finishCountdown(program);
  StatusBar& bar = program.frmMain.StatusBar;
  bar.Panels(3).Text = program.accounts[program.accounts.AcntNum()].AcntLastCheckText;
  bar.Panels(4).Text = program.autoCheck.NextCheckText;
}

void ToggleStartUpPause(Program& program) {
  if (program.startUp.StartUpDone) return;
  showNoWait(program);
  program.startUp.StartUpPaused = !program.startUp.StartUpPaused;
  showPaused(program, program.startUp.StartUpPaused);
}

void SuspendStartUpTimer(Program& program, TimerAction action) {
  const bool suspend = action == TimerAction::Suspend;
  if (suspend ? program.startUp.StartUpHolds++ > 0 : --program.startUp.StartUpHolds > 0) return;
  // The option may have been changed meanwhile, so it is asked about only once.
  const bool counts = suspend ? program.options.EmailCheckStartUp != 0 : program.startUp.StartUpHeld;
  if (!counts || program.startUp.StartUpDone) return;
  if (suspend) program.startUp.StartUpWasRunning = program.frmMain.tmrMailStartUp.Enabled;
  program.startUp.StartUpPaused = !suspend && program.startUp.StartUpWasRunning;
  program.startUp.StartUpHeld = suspend;
  SetInterfaceState(program);
  ToggleStartUpPause(program);
}

}  // namespace velmora
