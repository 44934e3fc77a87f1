#pragma once

#include <cstdint>

namespace velmora {

struct Program;

struct TabDrag {
  std::int16_t DragSource = 0;  ///< the strip on which the last press on a tab was: 1 the Email page's
};

/// Lets the user drag a tab of either strip onto another one, with which its account then changes places: a drag begins
/// where a press on a tab has lasted as long as tmrDragTab takes.
void ConnectTabDrag(Program& program);

}  // namespace velmora
