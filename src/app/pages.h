#pragma once

#include <cstdint>

namespace velmora {

struct Button;
struct Program;

/// The help's first topic.
inline constexpr int programHelp = 100;

/// Shows a page in place of the current one without making it the current one. Does nothing while the Email page is
/// the current one, since it shows then, nor during a connection test.
void ShowPage(Program& program, std::int16_t page);

/// Brings the interface in line with the number of accounts.
void SetAccountState(Program& program);
void ShowNoAccountState(Program& program);

/// What the window shows where the last account has gone, or none has ever been.
void ShowNoAccounts(Program& program);

/// Opens the help at the topic of the page that is showing.
void ShowHelp(Program& program);

/// Makes a page the current one and shows it.
void GoToPage(Program& program, std::int16_t page);

void tbrMainButtons_ButtonClick(Program& program, const Button& button);
void tbrButtons_ButtonClick(Program& program, const Button& button);

}  // namespace velmora
