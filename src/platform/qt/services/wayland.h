#pragma once

#include <QGuiApplication>

namespace velmora {

/// Whether the program shows itself on a Wayland desktop, which places windows itself and tells programs little of
/// them.
inline bool onWayland() { return QGuiApplication::platformName().startsWith("wayland"); }

}  // namespace velmora
