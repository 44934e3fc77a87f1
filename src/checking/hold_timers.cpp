#include "checking/hold_timers.h"

#include "app/program.h"
#include "checking/auto_check.h"
#include "checking/start_up_check.h"

namespace velmora {

void OpenDialog(Program& program) {
  ++program.dialogs.count;
  SuspendStartUpTimer(program, TimerAction::Suspend);
  SuspendAutoCheck(program, TimerAction::Suspend);
}

void CloseDialog(Program& program) {
  --program.dialogs.count;
  SuspendStartUpTimer(program, TimerAction::Restore);
  LetAutoCheckGoOn(program);
}

HoldTimers::HoldTimers(Program& program) : program_(program) { OpenDialog(program_); }

HoldTimers::~HoldTimers() { CloseDialog(program_); }

}  // namespace velmora
