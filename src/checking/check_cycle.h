#pragma once

#include <cstdint>

namespace velmora {

struct Program;

/// One account from start to finish. The outcome is left in the account and on the screen.
void CheckAccount(Program& program, std::int16_t account);

/// All enabled accounts, on the user's command.
void CheckAllAccounts(Program& program);

/// The account showing, on the user's command, whether it is enabled or not.
void CheckCurrentAccount(Program& program);

/// All enabled accounts, when the time for it has come.
void AutoCheckAccounts(Program& program);

/// All enabled accounts, some seconds after the program's start.
void StartUpCheckAccounts(Program& program);

/// Disables the interface around a check, a test or a deletion, and enables it after.
void SetCheckingInterface(Program& program, bool enabled, bool showStop);

/// Warns of accounts that may not have brought in all their messages.
void ReportIncompleteAccounts(Program& program);

}  // namespace velmora
