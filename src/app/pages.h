#pragma once

#include <cstdint>

namespace velmora {

struct Button;
struct Program;

/// Shows a page in place of the current one without making it the current one. Does nothing while the Email page is
/// the current one, since it shows then, nor during a connection test.
void ShowPage(Program& program, std::int16_t page);

/// Brings the interface in line with the number of accounts.
void SetAccountState(Program& program);
void ShowNoAccountState(Program& program);

/// Opens the help at the topic of the page that is showing.
void ShowHelp(Program& program);

/// Minimises the window and hides it.
void CloseToTray(Program& program);

void tbrMainButtons_ButtonClick(Program& program, const Button& button);
void tbrButtons_ButtonClick(Program& program, const Button& button);

}  // namespace velmora
