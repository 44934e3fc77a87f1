#pragma once

namespace velmora {

struct Program;

/// Sets the handlers of the preview's controls, and gives it its tabs.
void ConnectPreview(Program& program);

/// Opens the selected message in the preview, or shows it in the one that is open. Does nothing without a message.
void PreviewMessage(Program& program);

/// Shows the selected message in the preview, where it is open: what it shows is what its buttons work on.
void FollowInPreview(Program& program);

/// Closes the preview, where it is open.
void frmPreview_Unload(Program& program);

/// Asks for a file and writes the selected message into it. Failures are silent.
void SaveMessageAs(Program& program);

}  // namespace velmora
