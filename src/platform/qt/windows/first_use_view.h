#pragma once

#include "platform/qt/windows/form_view.h"

namespace velmora {

struct FirstUseWindow;

/// The welcome on the screen.
class FirstUseView : public FormView {
 public:
  /// `window` outlives the view, and so does `mainWindow`, which it stands above.
  FirstUseView(FirstUseWindow& window, QWidget* mainWindow);

 protected:
  void arrange() override;

 private:
  QWidget* makeHead();
  QWidget* makeSteps();

  FirstUseWindow& window_;
};

}  // namespace velmora
