#pragma once

#include "platform/qt/windows/form_view.h"

namespace velmora {

struct ProgressWindow;

/// The window on the screen that tells how far a work has come, unless that is done in a moment. It doesn't take the
/// keyboard away from what the user writes in, nor from another program.
class ProgressView : public FormView {
 public:
  /// `window` outlives the view, and so does `parent`, which it stands above.
  ProgressView(ProgressWindow& window, const QString& name, QWidget* parent);

 protected:
  void arrange() override;
  std::chrono::milliseconds patience() const override;
};

}  // namespace velmora
