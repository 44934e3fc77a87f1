#pragma once

#include <QSize>

class QWidget;

namespace velmora {

/// What a desktop's frame around a window may take.
inline constexpr QSize windowFrame(8, 40);

/// What the screen has for a window within its frame.
QSize roomFor(const QWidget& window);

/// A size that was designed for the usual font, in the window's own: a larger one needs more of both.
QSize inFontOf(const QWidget& window, const QSize& design);

/// How wide lines are that are easy to read, as far as the screen has room for them and the window's margins.
int lineWidthIn(const QWidget& window);

}  // namespace velmora
