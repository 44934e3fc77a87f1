#pragma once

namespace velmora {

struct Program;

/// Sets the handlers of the window's controls.
void ConnectRuleReport(Program& program);

/// Opens the Rule Report at the end of a check, if the rules ask for it and it isn't open.
void ShowRuleReport(Program& program);

/// Closes the window, if it is open.
void frmRuleReport_Unload(Program& program);

}  // namespace velmora
