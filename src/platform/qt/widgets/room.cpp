#include "platform/qt/widgets/room.h"

#include <QFontMetrics>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace velmora {

QSize roomFor(const QWidget& window) { return window.screen()->availableSize() - windowFrame; }

QSize inFontOf(const QWidget& window, const QSize& design) {
  constexpr double usualHeight = 15;  // of a line
  return design * std::max(1.0, window.fontMetrics().height() / usualHeight);
}

int lineWidthIn(const QWidget& window) {
  constexpr QSize design(460, 0);
  constexpr QSize margins(80, 0);
  return inFontOf(window, design).boundedTo(roomFor(window) - margins).width();
}

}  // namespace velmora
