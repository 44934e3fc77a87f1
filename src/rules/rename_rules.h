#pragma once

namespace velmora {

struct Program;

/// Sets the handlers of the window's controls.
void ConnectRuleFile(Program& program);

/// Opens the window that asks for another name of the Rules file.
void RenameRuleFile(Program& program);

/// Closes it, if it is open.
void frmRuleFile_Unload(Program& program);

}  // namespace velmora
