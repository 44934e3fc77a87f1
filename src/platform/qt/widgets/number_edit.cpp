#include "platform/qt/widgets/number_edit.h"

#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "platform/controls/number_box.h"
#include "platform/qt/strings.h"

namespace velmora {

NumberEdit::NumberEdit(NumberBox& box, const QString& name, QWidget* parent) : QSpinBox(parent), box_(box) {
  setObjectName(name);
  setFocusPolicy(Qt::StrongFocus);  // a wheel that turns the page must not bring the keyboard here
  setLocale(QLocale::c());
  for (auto* each : {&box.Value, &box.Least, &box.Most}) each->watch([this](std::int16_t) { showValue(); });
  setMinimumWidth(sizeHint().width());  // its bounds may come to leave room for one digit only
  box.Enabled.watch([this](bool on) { setEnabled(on); });
  connect(this, &QSpinBox::valueChanged, this, [this](int value) {
    box_.Type(std::to_string(value));
    showValue();
  });
  connect(lineEdit(), &QLineEdit::textEdited, this, [this] {
    if (std::exchange(emptied_, false)) selectAll();
  });
}

/// The range has all that the box may come to have, or Qt would bring that back into it.
void NumberEdit::showValue() {
  const QSignalBlocker quiet(this);
  const int least = std::min({box_.Least.get(), box_.Value.get(), std::int16_t{0}});
  const int most = std::max(box_.Most.get(), box_.Value.get());
  if (least != minimum() || most != maximum()) setRange(least, most);  // which lets go of an arrow that is held
  if (value() != box_.Value.get()) setValue(box_.Value);
  update();  // the arrows stop elsewhere where a bound has changed
}

QAbstractSpinBox::StepEnabled NumberEdit::stepEnabled() const {
  StepEnabled steps = StepNone;
  if (value() < box_.Most) steps |= StepUpEnabled;
  if (value() > box_.Least) steps |= StepDownEnabled;
  return steps;
}

void NumberEdit::stepBy(int steps) {
  const int least = box_.Least.get();
  const int most = std::max(least, int{box_.Most.get()});
  QSpinBox::stepBy(std::clamp(value() + steps, least, most) - value());
}

/// The value that the box has is not the user's fault.
QValidator::State NumberEdit::validate(QString& input, int& pos) const {
  if (input == textFromValue(value())) return QValidator::Acceptable;
  const auto number = box_.read(utf8(input));
  if (!number) return QValidator::Invalid;
  if (input.trimmed().isEmpty()) emptied_ = true;
  input = QString::number(*number);
  pos = std::min(pos, static_cast<int>(input.size()));
  return QValidator::Acceptable;
}

void NumberEdit::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace velmora
