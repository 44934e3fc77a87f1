#pragma once

#include <string>

namespace velmora {

struct Program;

/// Fills the live set from the Rules file at `path`.
void ReadRules(Program& program, const std::string& path);

/// Brings the working set into the live one and into the file. A write that fails is not told: the live set is then
/// newer than the file, which stays as it was.
void WriteRules(Program& program, const std::string& path);

/// Reads the user's rules when the program starts.
void StartRules(Program& program);

}  // namespace velmora
