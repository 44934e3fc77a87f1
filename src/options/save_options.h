#pragma once

namespace velmora {

struct Program;

/// Has the working copy of the options take effect and keeps it. Where it can't be kept, a message tells that it has
/// effect until the program ends. Returns whether it is kept.
bool SaveOptions(Program& program);

/// Once more keeps options that could not be kept. Tells nobody.
void KeepOptionsAtLast(Program& program);

}  // namespace velmora
