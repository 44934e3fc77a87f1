#pragma once

#include <cstdint>
#include <string>

namespace velmora {

struct Program;

/// The window state of a program that nothing is said of.
inline constexpr std::int16_t normalWindow = 1;

/// Starts an email client where its path leads to one, in a window of this state. Returns whether it was started.
bool StartClient(Program& program, const std::string& path, std::int16_t windowState);

/// Starts the default email client, or else that of the account showing; says so where neither can be started.
void StartClientProgram(Program& program);

/// Opens a file or an address with the program that the desktop has for it; says so where there is none.
void OpenOutside(Program& program, const std::string& target);

/// Begins a new message in the desktop's email client.
void NewMessage(Program& program);

/// Removes what was laid into the temporary folder for other programs.
void DeleteTemporaryFiles(Program& program);

}  // namespace velmora
