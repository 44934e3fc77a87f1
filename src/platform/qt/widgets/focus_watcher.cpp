#include "platform/qt/widgets/focus_watcher.h"

#include <QFocusEvent>
#include <QWidget>
#include <utility>

namespace velmora {

namespace {

bool isByKeyboard(Qt::FocusReason reason) { return reason != Qt::MouseFocusReason && reason != Qt::OtherFocusReason; }

class FocusWatcher : public QObject {
 public:
  FocusWatcher(QWidget& widget, std::function<void()> gotFocus) : QObject(&widget), gotFocus_(std::move(gotFocus)) {}

  bool eventFilter(QObject* watched, QEvent* event) override {
    // Afterwards, since a handler may hand the focus on while the widget is still taking it.
    if (event->type() == QEvent::FocusIn && !isByKeyboard(static_cast<QFocusEvent*>(event)->reason())) {
      QMetaObject::invokeMethod(this, gotFocus_, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  std::function<void()> gotFocus_;
};

}  // namespace

void watchFocus(QWidget& widget, std::function<void()> gotFocus) {
  // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the widget owns it
  widget.installEventFilter(new FocusWatcher(widget, std::move(gotFocus)));
}

}  // namespace velmora
