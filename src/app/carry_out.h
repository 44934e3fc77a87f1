#pragma once

#include "app/decisions/command_line.h"

namespace velmora {

struct Program;

/// Does what the command asks of the program that runs, as far as what it is doing allows that, and ignores commands
/// that mean nothing to one that runs. Blocks for as long as a check that it began takes, while the event loop turns.
void CarryOut(Program& program, Command command);

}  // namespace velmora
