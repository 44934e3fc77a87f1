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

}  // namespace velmora
