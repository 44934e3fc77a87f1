#pragma once

namespace velmora {

struct Program;

/// The user closes the window. With the option for it the window only goes to the tray; otherwise this is quitting.
void Form_Unload(Program& program);

/// The user ends the program, whatever closing the window means. Changes that he did not save are asked about
/// first; he may go back to them instead.
void QuitApplication(Program& program);

/// Keeps what a normal end keeps, and goes on. What the user has not saved on a page stays unsaved.
void SaveSession(Program& program);

/// Saves and releases everything, ends the program and asks nobody, for the desktop's session ends.
void EndApplication(Program& program);

}  // namespace velmora
