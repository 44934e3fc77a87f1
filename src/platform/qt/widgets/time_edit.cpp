#include "platform/qt/widgets/time_edit.h"

#include <QKeyEvent>
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
  connect(lineEdit(), &QLineEdit::textEdited, this, &TimeEdit::takeUnfinished);
  lineEdit()->installEventFilter(this);
}

/// What is no time stays in the control until the user sets one.
void TimeEdit::showText() {
  if (taking_) return;
  const QSignalBlocker quiet(this);
  const QTime time = QTime::fromString(qt(box_.Text.get()), displayFormat());
  setTime(time.isValid() ? time : QTime(0, 0));
}

/// The change may be refused.
void TimeEdit::take(const QTime& time) {
  const std::string text = utf8(time.toString(displayFormat()));
  {
    const SetForNow taking(taking_, true);
    box_.Text = text;
  }
  if (box_.Text.get() != text) showText();
}

/// What Qt would make of a text such as "1:30" only when the keyboard leaves, which a click on a button doesn't make it
/// do. The text stays as it is, for more may be typed.
void TimeEdit::takeUnfinished() {
  QString text = lineEdit()->text();
  fixup(text);
  const QTime time = QTime::fromString(text, displayFormat());
  if (time.isValid()) take(time);
}

/// What is typed over all of the text begins with the hours. The arrows lead to what the next key is to replace: beside
/// it Qt would refuse the key.
void TimeEdit::keyPressEvent(QKeyEvent* event) {
  if (lineEdit()->selectedText() == lineEdit()->text()) setSelectedSection(HourSection);
  const bool isArrow = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
  if (isArrow && !event->modifiers().testAnyFlags(Qt::ShiftModifier | Qt::ControlModifier)) {
    setSelectedSection(event->key() == Qt::Key_Left ? HourSection : MinuteSection);
  } else {
    QTimeEdit::keyPressEvent(event);
  }
}

/// A click selects what the next key is to replace.
bool TimeEdit::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease && !lineEdit()->hasSelectedText())
    setSelectedSection(currentSection());
  return QTimeEdit::eventFilter(watched, event);
}

void TimeEdit::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace velmora
