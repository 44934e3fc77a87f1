#pragma once

#include "platform/qt/windows/form_view.h"

namespace velmora {

struct RuleFitsWindow;

/// The messages that a rule fits on the screen.
class RuleFitsView : public FormView {
 public:
  /// `window` outlives the view.
  RuleFitsView(RuleFitsWindow& window, QWidget* mainWindow);
};

}  // namespace velmora
