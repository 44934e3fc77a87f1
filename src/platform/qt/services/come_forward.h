#pragma once

class QByteArray;
class QWidget;

namespace velmora {

/// Brings a window to the front and gives it the keyboard, since the user wants it: a window manager that takes care
/// that nobody steals that would refuse what a window asks for itself. Nothing happens on a desktop that isn't X11's.
void comeForward(const QWidget& window);

/// Tells the desktop that the start which bears this identifier is over (Startup Notification Protocol). Nothing
/// happens for a blank one, or on a desktop that isn't X11's.
void endStartUpNotice(const QByteArray& identifier);

}  // namespace velmora
