#pragma once

#include <QLineEdit>

class QToolButton;

namespace velmora {

/// A line for a password, in stars, with an eye at its end that shows and hides it. Whatever takes the line off the
/// screen hides it again.
class PasswordEdit : public QLineEdit {
 public:
  explicit PasswordEdit(QWidget* parent);

  void hidePassword();

 protected:
  void hideEvent(QHideEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void showInLetters(bool on);

  QToolButton* eye_;
};

}  // namespace velmora
