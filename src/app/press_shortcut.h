#pragma once

namespace velmora {

struct Program;
struct Shortcut;

/// Notes on each button, and on each entry of the list's menu, which keys press it.
void NameKeys(Program& program);

/// Does what the keys stand for, if the page that they belong to is showing. A button that is off stays dead.
void PressShortcut(Program& program, const Shortcut& shortcut);

}  // namespace velmora
