#pragma once

namespace velmora {

struct Program;

/// Lets the user drag a tab of either strip onto another one, with which its account then changes places: a drag begins
/// where a press on a tab has lasted as long as tmrDragTab takes.
void ConnectTabDrag(Program& program);

}  // namespace velmora
