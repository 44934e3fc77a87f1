#pragma once

namespace velmora {

struct Program;

/// Brings everything that may be pressed, and what stands in its place, in line with what the program has and does.
/// Whoever changes one of the values of a `Situation` calls this afterwards, and nobody else sets these states.
void SetInterfaceState(Program& program);

}  // namespace velmora
