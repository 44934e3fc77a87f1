#include "platform/qt/widgets/room.h"

#include <QFontMetrics>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace velmora {

QSize roomFor(const QWidget& window) {
  constexpr QSize frame(8, 40);
  return window.screen()->availableSize() - frame;
}

QSize inFontOf(const QWidget& window, const QSize& design) {
  constexpr double usualHeight = 15;  // of a line
  return design * std::max(1.0, window.fontMetrics().height() / usualHeight);
}

}  // namespace velmora
