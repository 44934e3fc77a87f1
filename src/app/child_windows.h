#pragma once

namespace velmora {

struct Form;
struct Program;

/// The windows that go with the main one when it leaves the screen. Their timers run on.
void HideChildWindows(Program& program);

/// Shows one of them, or has it come back with the main one.
void ShowChildWindow(Program& program, Form& window);

/// Brings those back that went with it, as far as they are still open.
void ShowChildWindows(Program& program);

}  // namespace velmora
