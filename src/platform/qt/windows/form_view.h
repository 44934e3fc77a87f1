#pragma once

#include <QDialog>
#include <QTimer>
#include <chrono>

namespace velmora {

struct Form;

/// A window beside the main one, which follows its form's properties and tells the form what the user does to it.
class FormView : public QDialog {
 public:
  /// `form` outlives the view.
  FormView(Form& form, QWidget* parent, Qt::WindowFlags flags);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void reject() override { close(); }  ///< Esc does what the close box does

  /// Ties the window to its form. Called last in the constructor, when its content stands.
  void followForm();

  /// The window is about to be shown.
  virtual void arrange() {}

  /// How long its form must want it to be seen before it is.
  virtual std::chrono::milliseconds patience() const { return {}; }

  void centreOnScreen();

 private:
  void appear();
  void setAlwaysOnTop(bool on);

  Form& form_;
  QTimer appears_;
  bool comesForward_ = false;  ///< once it appears
};

}  // namespace velmora
