#pragma once

namespace velmora {

struct Program;

/// The program has ended or is about to; whatever is still under way says and does nothing more.
bool IsEnding(const Program& program);

/// The user closes the window. With the option for it the window only goes to the tray; otherwise, or where quitting
/// was asked for, everything is saved and released and the program ends.
void Form_Unload(Program& program);

/// The user ends the program, whatever closing the window means. Changes of an account that he did not save are asked
/// about first, here and where closing ends the program; he may go back to them instead.
void QuitApplication(Program& program);

/// Keeps what a normal end keeps, and goes on. What the user has not saved on a page stays unsaved.
void SaveSession(Program& program);

/// Ends the program and asks nobody, for the desktop's session ends.
void EndApplication(Program& program);

}  // namespace velmora
