#pragma once

namespace velmora {

struct Program;

/// Brings the program up; from then on it lives on timers and events. Returns false, with nothing touched, where
/// another instance runs already.
bool Main(Program& program);

/// Fills the stores from the settings and the controls from the stores.
void Form_Load(Program& program);

}  // namespace velmora
