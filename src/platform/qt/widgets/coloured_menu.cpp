#include "platform/qt/widgets/coloured_menu.h"

#include <QPainter>
#include <QStyleOptionMenuItem>
#include <algorithm>
#include <utility>

#include "platform/qt/widgets/legible_colour.h"

namespace velmora {

QColor menuColour(const MenuColours& colours, int at, int height) {
  const QColor middle = colourOf(colours.middle);
  const int twice = 2 * at;
  if (height <= 0) return middle;
  return twice < height ? mixed(colourOf(colours.top), middle, twice, height)
                        : mixed(middle, colourOf(colours.bottom), twice - height, height);
}

void ColouredMenu::setColours(const std::optional<MenuColours>& colours) {
  colours_ = colours;
  update();
}

/// The style measures the entries, and shows what a menu too high for the screen is scrolled with.
void ColouredMenu::paintEvent(QPaintEvent* event) {
  QMenu::paintEvent(event);
  if (!colours_) return;
  QPainter painter(this);
  const QRect entries = entriesPlace();
  painter.setClipRect(clearOfScrollers(entries));
  for (const QAction* action : actions()) {
    if (action->isVisible()) paintEntry(painter, *action, entries);
  }
  painter.setPen(mixed(colourOf(colours_->bottom), legibleOn(colourOf(colours_->bottom)), 1, 2));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

/// Where all entries stand, which reaches beyond the menu where that is scrolled.
QRect ColouredMenu::entriesPlace() const {
  QRect place;
  for (QAction* action : actions()) place |= actionGeometry(action);
  return place;
}

QRect ColouredMenu::clearOfScrollers(const QRect& entries) const {
  const int scroller = style()->pixelMetric(QStyle::PM_MenuScrollerHeight, nullptr, this);
  QRect clear = rect();
  if (entries.top() < clear.top()) clear.setTop(scroller);
  if (entries.bottom() > clear.bottom()) clear.setBottom(clear.bottom() - scroller);
  return clear;
}

/// The outer entries reach to the menu's edge. The one selected has the two colours the other way round.
void ColouredMenu::paintEntry(QPainter& painter, const QAction& action, const QRect& entries) const {
  constexpr int dimmed = 6;
  constexpr int full = 10;
  QStyleOptionMenuItem entry;
  initStyleOption(&entry, &action);
  entry.rect = actionGeometry(const_cast<QAction*>(&action));  // NOLINT(cppcoreguidelines-pro-type-const-cast)
  QColor ground = menuColour(*colours_, entry.rect.center().y() - entries.top(), entries.height());
  QColor ink = legibleOn(ground);
  if (activeAction() == &action && !action.isSeparator()) std::swap(ground, ink);
  QRect field = entry.rect;
  if (field.left() == entries.left()) field.setLeft(rect().left());
  if (field.right() == entries.right()) field.setRight(rect().right());
  if (field.top() == entries.top()) field.setTop(std::min(rect().top(), entries.top()));
  if (field.bottom() == entries.bottom()) field.setBottom(std::max(rect().bottom(), entries.bottom()));
  painter.fillRect(field, ground);
  if (action.isSeparator() || !action.isEnabled()) ink = mixed(ground, ink, dimmed, full);
  paintContent(painter, entry, ink);
}

void ColouredMenu::paintContent(QPainter& painter, const QStyleOptionMenuItem& entry, const QColor& ink) const {
  constexpr int gap = 6;
  constexpr double pale = 0.5;
  const QRect place = entry.rect.adjusted(gap, 0, 0, 0);
  painter.setPen(ink);
  if (entry.menuItemType == QStyleOptionMenuItem::Separator) {
    painter.drawLine(place.left(), place.center().y(), place.right() - gap, place.center().y());
    return;
  }
  const int side = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
  painter.setOpacity(entry.state.testFlag(QStyle::State_Enabled) ? 1 : pale);
  entry.icon.paint(&painter, QRect(place.left(), place.top(), side, place.height()));
  painter.setOpacity(1);
  painter.setFont(entry.font);
  const bool marked = style()->styleHint(QStyle::SH_UnderlineShortcut, &entry, this) != 0;
  painter.drawText(place.adjusted(entry.maxIconWidth + gap, 0, 0, 0),
                   Qt::AlignVCenter | Qt::TextSingleLine | (marked ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                   entry.text.section('\t', 0, 0));
  painter.drawText(place.adjusted(0, 0, -gap, 0), Qt::AlignVCenter | Qt::AlignRight | Qt::TextSingleLine,
                   entry.text.section('\t', 1));
}

}  // namespace velmora
