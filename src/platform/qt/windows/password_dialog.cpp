#include "platform/qt/windows/password_dialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/platform.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/password_edit.h"
#include "platform/qt/widgets/prompt.h"
#include "platform/qt/widgets/room.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): widgets are owned by their parents

namespace velmora {

PasswordDialog::PasswordDialog(const PasswordQuestion& question, QWidget* parent)
    : QDialog(parent), password_(new PasswordEdit(this)) {
  constexpr int longestWord = 30;
  setObjectName("PasswordDialog");
  setWindowTitle(harmlessLine(question.title));
  auto* text = new QLabel(breakable(harmlessText(question.text), longestWord), this);
  text->setTextFormat(Qt::PlainText);
  text->setWordWrap(true);
  text->setFixedWidth(lineWidthIn(*this));
  password_->setObjectName("txtPassword");
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
  ok->setEnabled(false);
  connect(password_, &QLineEdit::textChanged, ok, [ok](const QString& entered) { ok->setEnabled(!entered.isEmpty()); });
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* column = new QVBoxLayout(this);
  column->addWidget(text);
  column->addWidget(makePrompt("Pass&word:", password_));
  column->addWidget(password_);
  column->addWidget(buttons);
  column->setSizeConstraint(QLayout::SetFixedSize);
  password_->setFocus();
}

std::string PasswordDialog::password() const { return utf8(password_->text()); }

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
