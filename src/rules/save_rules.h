#pragma once

#include <string>

namespace velmora {

struct Program;

/// Fills the live set from the Rules file at `path`.
void ReadRules(Program& program, const std::string& path);

/// Brings the working set into the file and into the live one. Where the file can't be written, a message tells so, and
/// file and live set stay as they were. Returns whether it was.
bool WriteRules(Program& program, const std::string& path);

/// Reads the user's rules when the program starts.
void StartRules(Program& program);

}  // namespace velmora
