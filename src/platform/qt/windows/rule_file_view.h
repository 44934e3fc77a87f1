#pragma once

#include "platform/qt/windows/form_view.h"

namespace velmora {

struct RuleFileWindow;

/// The window on the screen that asks for another name of the Rules file.
class RuleFileView : public FormView {
 public:
  /// `window` outlives the view, and so does `mainWindow`, which it stands above.
  RuleFileView(RuleFileWindow& window, QWidget* mainWindow);

 protected:
  void arrange() override;

 private:
  QWidget* makeIntro();
  QWidget* makeNames();
  void pressEnter();

  RuleFileWindow& window_;
  int lineWidth_;
};

}  // namespace velmora
