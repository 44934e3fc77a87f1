#include "platform/qt/widgets/focus_keeper.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <memory>

namespace velmora {

namespace {

QWidget* takerOf(const QWidget& widget) { return widget.window()->findChild<QWidget*>("cmdTakeFocus"); }

/// Returns what had the focus inside the widget, null where it was elsewhere.
QWidget* park(const QWidget& widget) {
  QWidget* focus = widget.window()->focusWidget();
  QWidget* taker = takerOf(widget);
  if (taker == nullptr || focus == nullptr || !widget.isAncestorOf(focus)) return nullptr;
  taker->setFocus();
  return focus;
}

void giveBack(const QWidget& widget, QWidget* left) {
  if (left != nullptr && widget.window()->focusWidget() == takerOf(widget)) left->setFocus(Qt::ActiveWindowFocusReason);
}

}  // namespace

void keepFocus(Property<bool>& on, QWidget& widget) {
  on.watch([&on, &widget, left = std::make_shared<QPointer<QWidget>>()](bool back) {
    if (!back) {
      if (QWidget* focus = park(widget)) *left = focus;
      return;
    }
    // Once all the rest is back, too.
    QTimer::singleShot(0, &widget, [&on, &widget, left] {
      if (!on) return;
      giveBack(widget, *left);
      left->clear();
    });
  });
}

}  // namespace velmora
