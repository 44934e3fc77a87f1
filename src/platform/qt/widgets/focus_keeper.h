#pragma once

#include "platform/controls/property.h"

class QWidget;

namespace velmora {

/// Gives the keyboard back to what had it inside `widget` when that was hidden or disabled, as it is during a check,
/// and is back. Meanwhile the window's "cmdTakeFocus" has it, where there is one; who takes it from there keeps it.
/// `on` is what shows or enables the widget; called before the widget itself watches it.
void keepFocus(Property<bool>& on, QWidget& widget);

}  // namespace velmora
