#pragma once

#include "app/decisions/command_line.h"

namespace velmora {

struct Program;

/// Brings the program up, with its window where the command says so, else as the option does; from then on it lives on
/// timers and events. Returns false, with nothing touched, where another instance runs already.
bool Main(Program& program, Command command = Command::Start);

/// Fills the stores from the settings and the controls from the stores.
void Form_Load(Program& program);

}  // namespace velmora
