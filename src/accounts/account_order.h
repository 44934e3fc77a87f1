#pragma once

#include <cstdint>

namespace velmora {

struct Program;

/// Deletes the account showing, after a question: its record, its keys in the settings, its messages in memory and its
/// tabs. The accounts behind it move up. Nothing happens on its server, nor to rules that bear its name.
void DeleteAccount(Program& program);

/// Exchanges an account with the one `offset` places on: records, keys, messages and tabs. It then shows the account
/// moved, which the other pages follow.
void SwapAccounts(Program& program, std::int16_t account, std::int16_t offset);

}  // namespace velmora
