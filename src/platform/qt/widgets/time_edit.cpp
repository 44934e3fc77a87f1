#include "platform/qt/widgets/time_edit.h"

#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "platform/controls/time_box.h"
#include "platform/qt/strings.h"
#include "platform/set_for_now.h"

namespace velmora {

TimeEdit::TimeEdit(TimeBox& box, const QString& name, QWidget* parent) : QTimeEdit(parent), box_(box) {
  setObjectName(name);
  setFocusPolicy(Qt::StrongFocus);  // a wheel that turns the page must not bring the keyboard here
  setLocale(QLocale::c());
  setDisplayFormat("HH:mm");
  box.Text.watch([this](const std::string&) { showText(); });
  box.Enabled.watch([this](bool on) { setEnabled(on); });
  connect(this, &QTimeEdit::timeChanged, this, &TimeEdit::take);
}

/// What is no time stays in the control until the user sets one.
void TimeEdit::showText() {
  if (taking_) return;
  const QSignalBlocker quiet(this);
  const QTime time = QTime::fromString(qt(box_.Text.get()), "H:m");
  setTime(time.isValid() ? time : QTime(0, 0));
}

void TimeEdit::take(const QTime& time) {
  const SetForNow taking(taking_, true);
  box_.Text = utf8(time.toString("HH:mm"));
}

void TimeEdit::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace velmora
