#pragma once

namespace velmora {

struct Program;

/// Asks for a Rules file, and makes a copy of it under the same name the one in use, with every rule for all accounts.
/// Where the file holds no rules or can't be copied, a message tells so, and all stays as it was.
void ImportRules(Program& program);

}  // namespace velmora
