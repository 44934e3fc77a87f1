#pragma once

namespace velmora {

struct Program;

/// Reads the colours of the menus, and writes them to the file that the menus read theirs from.
void LoadMenuColours(Program& program);

/// Writes that file, and has the menus take what is in it. Where it can't be written they stay as they are.
void WriteMenuStyleFile(Program& program);

/// Ties the three colour boxes to the choice of a colour.
void ConnectMenuColours(Program& program);

}  // namespace velmora
