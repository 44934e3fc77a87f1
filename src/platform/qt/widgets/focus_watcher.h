#pragma once

#include <functional>

class QWidget;

namespace velmora {

/// Calls `gotFocus` each time the widget takes the keyboard focus, for as long as it lives; but not where the user
/// brings it there by the keyboard, or comes back to the window, and so wants to see where it is.
void watchFocus(QWidget& widget, std::function<void()> gotFocus);

}  // namespace velmora
