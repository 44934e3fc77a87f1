#pragma once

namespace velmora {

struct Program;

/// Shows the buttons of each toolbar flat or raised, as the options have it.
void ApplyButtonStyle(Program& program);

}  // namespace velmora
