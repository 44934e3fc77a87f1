#include "platform/qt/widgets/menu_preview.h"

#include <QPainter>
#include <array>

#include "platform/qt/widgets/coloured_menu.h"
#include "platform/qt/widgets/legible_colour.h"

namespace velmora {

namespace {

constexpr std::array entries = {"Check All", "Preview", "Reply", "Accounts", "Rules", "Options", "Help", "Quit"};
constexpr int gap = 6;

}  // namespace

MenuPreview::MenuPreview(std::function<MenuColours()> colours, QWidget* parent)
    : QWidget(parent), colours_(std::move(colours)) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize MenuPreview::sizeHint() const {
  constexpr int widest = 12;
  return {fontMetrics().averageCharWidth() * widest, (fontMetrics().height() + gap) * static_cast<int>(entries.size())};
}

void MenuPreview::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const MenuColours colours = colours_();
  const int step = height() / static_cast<int>(entries.size());
  QRect place(0, 0, width(), step);
  for (const char* entry : entries) {
    const QColor ground = menuColour(colours, place.center().y(), height());
    painter.fillRect(place, ground);
    painter.setPen(legibleOn(ground));
    painter.drawText(place.adjusted(gap, 0, -gap, 0), Qt::AlignVCenter, entry);
    place.translate(0, step);
  }
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(0, 0, width() - 1, step * static_cast<int>(entries.size()) - 1);
}

}  // namespace velmora
