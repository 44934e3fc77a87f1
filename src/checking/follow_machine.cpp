#include "checking/follow_machine.h"

#include <utility>

#include "app/program.h"
#include "checking/auto_check.h"
#include "checking/decisions/schedule.h"

namespace velmora {

namespace {

void showNextCheck(Program& program, const std::string& text) {
  program.autoCheck.NextCheckText = text;
  program.frmMain.StatusBar.Panels(4).Text = text;
}

/// Another timing may have been saved since.
void putOff(Program& program) {
  program.machine.PutOff = true;
  if (program.autoCheck.NextCheckText != autoCheckWaits) showNextCheck(program, autoCheckWaits);
}

/// The network is back, or nobody tells of it any more. In the quiet period the next check comes when the timing wants
/// it. Returns whether the one that was put off does.
bool bringPutOff(Program& program) {
  ForgetPutOffCheck(program);
  if (isQuiet(program.options, program.platform.now())) {
    NextAutoCheck(program, 0, false);
    showNextCheck(program, program.autoCheck.NextCheckText);
    return false;
  }
  program.machine.Brought = true;
  program.machine.SecondsLeft = secondsUntilCheck;
  return true;
}

}  // namespace

void WatchMachine(Program& program) {
  const bool wanted = program.options.FollowMachine == 1;
  if (!wanted || program.options.UseInterval != 1) ForgetPutOffCheck(program);
  if (std::exchange(program.machine.Watched, wanted) == wanted) return;
  program.platform.watchMachine(wanted ? [&program] { MachineIsBack(program); } : std::function<void()>());
}

void MachineIsBack(Program& program) {
  if (program.options.UseInterval != 1 || program.accounts.AcntNum() == 0) return;
  MachineState& machine = program.machine;
  machine.SecondsLeft = secondsUntilCheck;
  const DateTime now = program.platform.now();
  if (!mayComeEarly(program.options, machine.LastBrought, now)) return;
  machine.Brought = true;
  machine.LastBrought = now;
}

bool MachineLetsCheck(Program& program, bool due) {
  MachineState& machine = program.machine;
  if (!machine.Watched) return due;
  if (waitsForNetwork(program)) {
    if (due || machine.Brought || machine.PutOff) putOff(program);
    return false;
  }
  if (machine.PutOff && !bringPutOff(program)) return false;
  if (machine.SecondsLeft == 0) return due || machine.Brought;
  --machine.SecondsLeft;
  return false;
}

bool waitsForNetwork(const Program& program) {
  return program.machine.Watched && program.platform.connectivity() == Connectivity::Offline;
}

void ForgetPutOffCheck(Program& program) {
  MachineState& machine = program.machine;
  machine.Brought = false;
  machine.SecondsLeft = 0;
  if (std::exchange(machine.PutOff, false)) showNextCheck(program, program.autoCheck.SavedNextCheckText);
}

}  // namespace velmora
