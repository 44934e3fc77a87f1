#pragma once

#include <functional>

class QWidget;

namespace velmora {

/// Calls `gotFocus` each time the widget takes the keyboard focus, for as long as it lives.
void watchFocus(QWidget& widget, std::function<void()> gotFocus);

}  // namespace velmora
