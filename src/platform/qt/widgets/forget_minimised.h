#pragma once

class QWidget;

namespace velmora {

/// Lets a hidden window that was minimised when last seen come back as a normal one when it is shown next; others it
/// leaves alone. Qt shows such a window before it tells the X11 window manager of the new state (WM_HINTS, ICCCM
/// 4.1.2.4), which thus minimises it once more, and with it the windows that belong to it; a program that runs faster
/// than the window manager takes that for the user's wish.
void forgetMinimised(QWidget& window);

}  // namespace velmora
