#pragma once

#include <string>
#include <string_view>

namespace velmora {

struct Program;

/// A plain file with this ending, whatever its case: what makes a client or a sound usable.
bool isFileWithEnding(const Program& program, const std::string& path, std::string_view ending);

/// Starts the default email client, or else that of the account showing; says so where neither can be started.
void StartClientProgram(Program& program);

/// Begins a new message in the desktop's email client.
void NewMessage(Program& program);

/// Removes what was laid into the temporary folder for other programs.
void DeleteTemporaryFiles(Program& program);

}  // namespace velmora
