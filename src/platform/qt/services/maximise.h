#pragma once

#include <QtGlobal>

namespace velmora {

/// Has the window manager maximise the first main window that this process, which was just started, opens within some
/// seconds. Returns at once. Nothing happens on a desktop that lets no program reach another's windows, as Wayland.
void maximiseWindowOf(qint64 process);

}  // namespace velmora
