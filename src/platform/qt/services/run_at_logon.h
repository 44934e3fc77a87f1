#pragma once

namespace velmora {

/// Makes the file that has the desktop start the program at logon (XDG autostart). Failures are silent.
void addLogonEntry();

/// Removes it.
void removeLogonEntry();

}  // namespace velmora
