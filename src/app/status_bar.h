#pragma once

#include <cstdint>

namespace velmora {

struct Program;

/// Panels 1 to 4 speak of this account.
void RefreshAccountPanels(Program& program, std::int16_t account);

/// Panel 5 shows the time. Every tick of the timer that runs does it.
void ShowClock(Program& program);

/// The pointer rests on the status bar: its tip speaks of the panel there.
void ShowPanelTip(Program& program, std::int32_t x, std::int32_t y);

}  // namespace velmora
