#pragma once

namespace velmora {

struct Program;

/// Fills the welcome and sets its handlers.
void ConnectFirstUse(Program& program);

/// Shows it; the program goes on behind it.
void ShowFirstUse(Program& program);

/// Closes it, if it is open.
void frmFirstUse_Unload(Program& program);

}  // namespace velmora
