#pragma once

namespace velmora {

struct Program;

/// Sets the handlers of the buttons Export and Import.
void ConnectMoveSettings(Program& program);

/// Writes accounts, options and rules into a file that the user names, to be imported on another machine.
void ExportSettings(Program& program);

/// Puts what such a file holds in place of what is here, once the user has seen what that changes. A copy of what was
/// here is kept. All of it takes effect or nothing, however the program ends meanwhile: it is one Keep of the settings,
/// which also lead to the Rules file from then on.
void ImportSettings(Program& program);

}  // namespace velmora
