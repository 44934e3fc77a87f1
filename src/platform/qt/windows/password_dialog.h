#pragma once

#include <QDialog>
#include <string>

namespace velmora {

class PasswordEdit;
struct PasswordQuestion;

/// Asks the user for a password. Without one it can only be cancelled.
class PasswordDialog : public QDialog {
 public:
  PasswordDialog(const PasswordQuestion& question, QWidget* parent);

  std::string password() const;

 private:
  PasswordEdit* password_;
};

}  // namespace velmora
