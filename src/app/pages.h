#pragma once

#include <cstdint>

namespace velmora {

struct Button;
struct Program;

/// The help's first topic.
inline constexpr int programHelp = 100;

/// Shows the Email page in place of the current one without making it the current one, or that one again. The two are
/// not the same.
void ShowPage(Program& program, std::int16_t page);

/// What the window shows where the last account has gone, or none has ever been.
void ShowNoAccounts(Program& program);

/// Opens the help at the topic of the page that is showing.
void ShowHelp(Program& program);

/// Makes a page the current one and shows it.
void GoToPage(Program& program, std::int16_t page);

void tbrMainButtons_ButtonClick(Program& program, const Button& button);
void tbrButtons_ButtonClick(Program& program, const Button& button);

}  // namespace velmora
