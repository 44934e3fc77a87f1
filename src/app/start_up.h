#pragma once

namespace velmora {

struct Program;

/// Brings the program up; from then on it lives on timers and events. Returns false, with nothing touched, where
/// another instance runs already.
bool Main(Program& program);

/// Fills the stores from the settings and the controls from the stores.
void Form_Load(Program& program);

/// What the window does when its state changes: minimising means going to the tray.
void Form_Resize(Program& program);

}  // namespace velmora
