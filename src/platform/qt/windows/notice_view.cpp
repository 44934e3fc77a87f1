#include "platform/qt/windows/notice_view.h"

#include <QApplication>
#include <QLabel>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <algorithm>

#include "platform/qt/services/wayland.h"
#include "platform/qt/widgets/bind.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

NoticeView::NoticeView(Form& form, Qt::Edges corner) : FormView(form, nullptr, Qt::Dialog), corner_(corner) {}

QLabel* NoticeView::makeCountDown(Label& label, const char* name, const char* tip) {
  auto* seconds = makeLabel(label, name, this);
  seconds->setToolTip(tip);
  QFont large = seconds->font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  large.setBold(true);
  seconds->setFont(large);
  return seconds;
}

QScrollArea* NoticeView::makeLines(const char* name, QWidget* content) {
  auto* area = new QScrollArea(this);
  area->setObjectName(name);
  area->setAccessibleName("Accounts");
  area->setWidget(content);
  area->setWidgetResizable(true);
  return area;
}

/// A label of so many lines knows how high they are.
void NoticeView::makeRoom(QScrollArea& area, int lines, int least) {
  const QLabel measure(QString("x\n").repeated(lines).chopped(1), &area);
  const QMargins margins = area.widget()->layout()->contentsMargins();
  const int wanted =
      std::max(measure.sizeHint().height(), least) + margins.top() + margins.bottom() + 2 * area.frameWidth();
  area.setFixedHeight(std::min(wanted, area.screen()->availableSize().height() / 2));
}

/// As wide as its title, too, beside the window's buttons. Only where the user is at work with the program does it take
/// the keyboard, which is settled when a window is made.
void NoticeView::arrange() {
  destroy();
  setAttribute(Qt::WA_ShowWithoutActivating, QApplication::activeWindow() == nullptr);
  prepare();
  constexpr int windowButtons = 140;
  setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  setMinimumSize(fontMetrics().horizontalAdvance(windowTitle()) + windowButtons, 0);
  adjustSize();
  // Desktops that lay windows side by side let only those of a fixed size float, and give others a side of the screen.
  if (onWayland()) setFixedSize(size().expandedTo(layout()->totalMinimumSize()));
  constexpr QMargins distance(24, 48, 24, 48);
  const QRect room = screen()->availableGeometry().marginsRemoved(distance);
  QRect place(room.topLeft(), size());
  if (corner_.testFlag(Qt::RightEdge)) place.moveRight(room.right());
  if (corner_.testFlag(Qt::BottomEdge)) place.moveBottom(room.bottom());
  move(place.topLeft());
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
