#pragma once

#include <cstdint>
#include <string>

#include "app/decisions/activity.h"

namespace velmora {

struct Program;

/// What a walk over the accounts found.
struct WalkTotals {
  std::int16_t TotalMessages = 0;
  std::int16_t TotalNew = 0;
  std::string IncompleteAccounts;  ///< one name a line
  std::string AccountInfoText;
  std::int16_t AccountInfoLines = 0;
  bool byItself = false;  ///< the walk that is under way was begun by nobody, who could be asked
};

/// All enabled accounts, on the user's command.
void CheckAllAccounts(Program& program);

/// The account showing, on the user's command, whether it is enabled or not.
void CheckCurrentAccount(Program& program);

/// All enabled accounts, when the time for it has come.
void AutoCheckAccounts(Program& program);

/// All enabled accounts, some seconds after the program's start.
void StartUpCheckAccounts(Program& program);

/// Says what the program is doing from now on, for all who ask before they start something, and shuts or opens the
/// interface accordingly. Checks and deletions come with the Email page in front; when they end, the current page is
/// there again, and as it was. Nothing follows on `Activity::Ending`.
void SetCheckingInterface(Program& program, Activity activity);

/// Warns of accounts that may not have brought in all their messages.
void ReportIncompleteAccounts(Program& program);

}  // namespace velmora
