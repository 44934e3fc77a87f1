#pragma once

#include <string_view>

namespace velmora {

struct Program;

/// Keeps what the user has saved. Where that can't be, a box tells him why, and `loss` what it means to him. Returns
/// whether it is kept; the settings tree is again what it was where not.
bool KeepSettings(Program& program, std::string_view loss);

/// Likewise tells him that a file could not be written.
void TellNotSaved(Program& program, std::string_view loss, std::string_view reason);

}  // namespace velmora
