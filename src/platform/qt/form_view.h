#pragma once

#include <QWidget>

namespace velmora {

struct Form;

/// A window beside the main one, which follows its form's properties and tells the form what the user does to it.
class FormView : public QWidget {
 public:
  /// `form` outlives the view.
  FormView(Form& form, QWidget* parent, Qt::WindowFlags flags);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

  /// Calls what the form has been told to show and to keep; the window's content stands by then.
  void followForm();

  /// The window is about to be shown.
  virtual void arrange() {}

 private:
  void setAlwaysOnTop(bool on);
  void centreOnScreen();

  Form& form_;
};

}  // namespace velmora
