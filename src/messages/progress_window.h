#pragma once

#include "platform/controls/form.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/toolbar.h"

namespace velmora {

/// A small window that tells how far a work has come that takes its time, and ends it at a press.
struct ProgressWindow : Form {
  Label lblProgress;  ///< what is being done, in a line or two
  velmora::ProgressBar ProgressBar{.Visible = true};
  Toolbar tbrProgress{"imlButtons", {{"Stop", "Stop    ", "Stop it", "Stop"}}};
};

}  // namespace velmora
