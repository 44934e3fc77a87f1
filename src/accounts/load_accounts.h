#pragma once

#include <cstdint>

namespace velmora {

struct Program;

/// Reads the accounts 1 to `count` from the settings, in place of those that were there: their tabs, and the first one
/// selected. Nothing was found of them yet.
void LoadAccounts(Program& program, std::int16_t count);

}  // namespace velmora
