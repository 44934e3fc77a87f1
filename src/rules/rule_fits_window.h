#pragma once

#include "platform/controls/form.h"
#include "platform/controls/list_view.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/text_box.h"
#include "platform/controls/toolbar.h"

namespace velmora {

/// Lists the messages that the rule showing on the Rules page would fit, as it stands there.
struct RuleFitsWindow : Form {
  bool RuleFitsOpen = false;

  Label lblRuleFits;
  ListView lvwRuleFits{"Account", "From", "Subject"};
  ToolTip tipRuleFits;
  Toolbar tbrButtons{"imlRuleReport", {{"Close", "Close   ", "Close this List", "Exit"}}};
};

}  // namespace velmora
