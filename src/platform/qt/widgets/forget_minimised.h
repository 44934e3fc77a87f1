#pragma once

class QWidget;

namespace velmora {

/// Lets a hidden window that was minimised when last seen come back as it then asks to. Qt shows such a window before
/// it tells the X11 window manager of the new state (WM_HINTS, ICCCM 4.1.2.4), which thus minimises it once more; a
/// program that runs faster than the window manager takes that for the user's wish. Elsewhere it does nothing.
void forgetMinimised(const QWidget& window);

}  // namespace velmora
