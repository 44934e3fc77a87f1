#include "platform/qt/widgets/password_edit.h"

#include <QToolButton>

#include "platform/qt/widgets/icons.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

PasswordEdit::PasswordEdit(QWidget* parent) : QLineEdit(parent), eye_(new QToolButton(this)) {
  setStyleSheet("QLineEdit { lineedit-password-character: 42 }");
  eye_->setObjectName("ShowPassword");
  eye_->setAccessibleName("Show the password");
  eye_->setToolTip("Show or hide the password");
  eye_->setCheckable(true);
  eye_->setAutoRaise(true);
  eye_->setFocusPolicy(Qt::StrongFocus);
  eye_->setCursor(Qt::ArrowCursor);
  connect(eye_, &QToolButton::toggled, this, &PasswordEdit::showInLetters);
  showInLetters(false);
}

void PasswordEdit::hidePassword() { eye_->setChecked(false); }

/// Input methods remember words that they see: never these.
void PasswordEdit::showInLetters(bool on) {
  setEchoMode(on ? Normal : Password);
  setInputMethodHints(inputMethodHints() | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
  eye_->setIcon(ImageList("imlPassword").icon(on ? "HidePassword" : "ShowPassword"));
}

void PasswordEdit::hideEvent(QHideEvent* event) {
  hidePassword();
  QLineEdit::hideEvent(event);
}

void PasswordEdit::resizeEvent(QResizeEvent* event) {
  QLineEdit::resizeEvent(event);
  constexpr int edge = 2;
  const int side = height() - 2 * edge;
  eye_->setGeometry(width() - side - edge, edge, side, side);
  setTextMargins(0, 0, side, 0);
}

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
