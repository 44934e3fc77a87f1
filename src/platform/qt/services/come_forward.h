#pragma once

class QByteArray;
class QWidget;

namespace velmora {

/// Brings a window to the front and gives it the keyboard, since the user wants it: a window manager that takes care
/// that nobody steals that would refuse what a window asks for itself. Nothing happens on a desktop that isn't X11's.
void comeForward(const QWidget& window);

/// The same on Wayland, for a window that shows somewhere: the desktop gives the right to come to the front to nobody
/// but those that the user has just been at, while a window that appears anew is in front. It and those that belong to
/// it leave the screen and come back. Nothing happens where the window is in front a moment later, as one is that
/// had the right or has just been shown, or where a question waits for its answer.
void appearAnew(QWidget& window);

/// The environment variable that the library takes the right to come to the front from, on Wayland.
inline constexpr auto activationTokenVariable = "XDG_ACTIVATION_TOKEN";

/// Has the window that comes forward now do so by this right. It serves one window: what the program starts must not
/// inherit it, so it is gone as soon as the event loop turns.
void useActivationToken(const QByteArray& token);

/// Tells the desktop that the start which bears this identifier is over (Startup Notification Protocol). Nothing
/// happens for a blank one, or on a desktop that isn't X11's.
void endStartUpNotice(const QByteArray& identifier);

}  // namespace velmora
