#include "checking/connection_test.h"

#include "accounts/accounts_page.h"
#include "app/program.h"
#include "checking/auto_check.h"
#include "checking/check_cycle.h"
#include "checking/pop_session.h"
#include "checking/start_up_check.h"

namespace velmora {

void TestCurrentAccount(Program& program) {
  const Accounts& accounts = program.accounts;
  EndStartUpCountdown(program);
  SuspendAutoCheck(program, TimerAction::Suspend);
  program.connection.StopRequested = false;  // a walk that was stopped leaves it
  SetCheckingInterface(program, Activity::Testing);
  TestConnection(program, accounts.AcntCurrent);
  ShowAccount(program, accounts.AcntCurrent);
  SetCheckingInterface(program, Activity::Idle);
  SuspendAutoCheck(program, TimerAction::Restore);
  StatusBar& bar = program.frmMain.StatusBar;
  bar.Panels(3).Text = accounts[accounts.AcntNum()].AcntLastCheckText;  // of the last one, whichever is shown
  bar.Panels(4).Text = program.autoCheck.NextCheckText;
}

}  // namespace velmora
