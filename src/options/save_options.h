#pragma once

namespace velmora {

struct Program;

/// Has the working copy of the options take effect and keeps it.
void SaveOptions(Program& program);

}  // namespace velmora
