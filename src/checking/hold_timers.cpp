#include "checking/hold_timers.h"

#include "checking/auto_check.h"
#include "checking/start_up_check.h"

namespace velmora {

HoldTimers::HoldTimers(Program& program) : program_(program) {
  SuspendStartUpTimer(program_, TimerAction::Suspend);
  SuspendAutoCheck(program_, TimerAction::Suspend);
}

HoldTimers::~HoldTimers() {
  SuspendStartUpTimer(program_, TimerAction::Restore);
  LetAutoCheckGoOn(program_);
}

}  // namespace velmora
