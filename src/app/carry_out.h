#pragma once

#include "app/decisions/command_line.h"

namespace velmora {

struct Program;

/// Does what the command asks of the program that runs, as far as what it is doing allows that; returns at once only
/// where nothing is checked. Commands that a running program has nothing to do with are ignored.
void CarryOut(Program& program, Command command);

}  // namespace velmora
