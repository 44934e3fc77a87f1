#include "platform/qt/widgets/tab_bar.h"

#include <QCursor>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QToolButton>
#include <string>

#include "platform/controls/tab_strip.h"
#include "platform/qt/widgets/focus_watcher.h"
#include "platform/qt/widgets/harmless_text.h"

namespace velmora {

namespace {

MouseButton buttonOf(const QMouseEvent& event) {
  if (event.button() == Qt::RightButton) return MouseButton::Right;
  return event.button() == Qt::LeftButton ? MouseButton::Left : MouseButton::Middle;
}

QCursor dragCursor(std::int16_t picture) {
  constexpr QSize size(32, 32);
  return QCursor(ImageList("imlDragIcons").icon(std::to_string(picture)).pixmap(size), 0, 0);
}

}  // namespace

// A strip is disabled during a check, and its pictures are what tells of it.
TabBar::TabBar(TabStrip& strip, const char* name, const char* accessibleName, QWidget* parent,
               std::string_view imageList)
    : QTabBar(parent), strip_(strip), images_(std::string(imageList), ImageList::WhenDisabled::AsItIs) {
  setObjectName(name);
  setAccessibleName(accessibleName);
  setExpanding(false);
  setDocumentMode(true);
  setUsesScrollButtons(true);
  setElideMode(Qt::ElideNone);  // many tabs would be cut to their first letters before they scroll
  addMissingTabs();
  follow();
  followDrag();
}

void TabBar::follow() {
  strip_.added.watch([this] { addMissingTabs(); });
  strip_.removed.watch([this] {
    const QSignalBlocker quiet(*this);
    removeTab(count() - 1);
    setCurrentIndex(strip_.SelectedItem() - 1);
  });
  strip_.selectionChanged.watch([this] {
    const QSignalBlocker quiet(*this);
    setCurrentIndex(strip_.SelectedItem() - 1);
  });
  strip_.Enabled.watch([this](bool on) {
    if (!on) letGo();
    setEnabled(on);
  });
  connect(this, &QTabBar::currentChanged, this, &TabBar::takeSelection);
  watchFocus(*this, [this] {
    if (strip_.GotFocus) strip_.GotFocus();
  });
}

void TabBar::followDrag() {
  constexpr int pause = 250;
  scroll_.setInterval(pause);
  connect(&scroll_, &QTimer::timeout, this, &TabBar::scrollUnderDrag);
  strip_.DragIcon.watch([this](std::int16_t picture) {
    if (strip_.Dragging) setCursor(dragCursor(picture));
  });
  strip_.Dragging.watch([this](bool on) {
    on ? scroll_.start() : scroll_.stop();
    on ? setCursor(dragCursor(strip_.DragIcon)) : unsetCursor();
  });
}

/// Adds the tabs that the strip has and the bar does not.
void TabBar::addMissingTabs() {
  const QSignalBlocker quiet(*this);
  for (int index = count(); index < strip_.Count(); ++index) {
    addTab(QString());
    bindTab(index);
  }
  setCurrentIndex(strip_.SelectedItem() - 1);
  updateGeometry();  // a hidden bar that a picture lays out would keep the height of none
}

void TabBar::bindTab(int index) {
  TabStrip::Tab& tab = strip_.Tabs(index + 1);
  tab.Caption.watch([this, index](const std::string& caption) {
    constexpr qsizetype longest = 40;
    QString shown = harmlessLine(caption, longest);
    setAccessibleTabName(index, shown.isEmpty() ? QStringLiteral("No account") : shown);
    setTabText(index, shown.replace("&", "&&"));
  });
  tab.Image.watch([this, index](const std::string& key) { setTabIcon(index, images_.icon(key)); });
}

/// The keyboard, the wheel or a screen reader has chosen a tab; the last can do so where nobody else can.
void TabBar::takeSelection() {
  const int chosen = currentIndex() + 1;
  if (strip_.Enabled && isVisible()) {
    strip_.SelectTab(chosen);
  } else {
    const QSignalBlocker quiet(*this);
    setCurrentIndex(strip_.SelectedItem() - 1);
  }
}

void TabBar::noteMeasures() {
  strip_.Height = height();
  for (int index = 0; index < count(); ++index) strip_.Tabs(index + 1).Width = tabRect(index).width();
}

/// Where it is along the tabs, the part of them scrolled out of sight included; -1 beside what is in sight.
std::int32_t TabBar::positionOf(const QPoint& at) const {
  return rect().contains(at) && childAt(at) == nullptr ? at.x() - tabRect(0).left() : -1;
}

/// Qt's own handling would look for the tab only now, and the selection may have scrolled another one to this place.
void TabBar::mousePressEvent(QMouseEvent* event) {
  const int index = tabAt(event->pos());
  noteMeasures();
  const bool wasSelected = index == currentIndex();
  if (strip_.BeforeClick) strip_.BeforeClick();
  if (strip_.MouseDown) strip_.MouseDown(buttonOf(*event), positionOf(event->pos()));
  if (event->button() != Qt::LeftButton || index < 0) return;
  if (wasSelected) {
    if (strip_.Click) strip_.Click();
  } else {
    strip_.SelectTab(index + 1);
  }
}

void TabBar::mouseMoveEvent(QMouseEvent* event) {
  if (strip_.Dragging && strip_.DragOver) strip_.DragOver(positionOf(event->pos()), event->pos().y());
}

/// Also where the release of the button goes elsewhere.
void TabBar::letGo() {
  if (strip_.MouseUp) strip_.MouseUp();
  strip_.Dragging = false;
}

void TabBar::mouseReleaseEvent(QMouseEvent* event) {
  const bool wasDragging = strip_.Dragging;
  letGo();
  if (!wasDragging) return;
  const std::int32_t x = positionOf(event->pos());
  if (x >= 0 && strip_.DragDrop) strip_.DragDrop(x);
}

void TabBar::wheelEvent(QWheelEvent* event) {
  if (!strip_.Dragging) QTabBar::wheelEvent(event);
}

void TabBar::hideEvent(QHideEvent* event) {
  letGo();
  QTabBar::hideEvent(event);
}

void TabBar::scrollUnderDrag() {
  auto* arrow = qobject_cast<QToolButton*>(childAt(mapFromGlobal(QCursor::pos())));
  if (arrow != nullptr && arrow->isEnabled()) arrow->click();
}

}  // namespace velmora
