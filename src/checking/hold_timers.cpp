#include "checking/hold_timers.h"

#include "app/program.h"
#include "checking/auto_check.h"
#include "checking/start_up_check.h"

namespace velmora {

HoldTimers::HoldTimers(Program& program) : program_(program) {
  ++program_.dialogs.count;
  SuspendStartUpTimer(program_, TimerAction::Suspend);
  SuspendAutoCheck(program_, TimerAction::Suspend);
}

HoldTimers::~HoldTimers() {
  --program_.dialogs.count;
  SuspendStartUpTimer(program_, TimerAction::Restore);
  LetAutoCheckGoOn(program_);
}

}  // namespace velmora
