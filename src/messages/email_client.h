#pragma once

#include <string>

namespace velmora {

struct Program;

/// Starts the default email client, or else that of the account showing; says so where neither can be started.
void StartClientProgram(Program& program);

/// Opens a file or an address with the program that the desktop has for it; says so where there is none.
void OpenOutside(Program& program, const std::string& target);

/// Begins a new message in the desktop's email client.
void NewMessage(Program& program);

/// Removes what was laid into the temporary folder for other programs.
void DeleteTemporaryFiles(Program& program);

}  // namespace velmora
