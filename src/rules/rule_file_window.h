#pragma once

#include "platform/controls/form.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/text_box.h"
#include "platform/controls/toolbar.h"

namespace velmora {

/// Asks for the name under which the rules are to be kept from now on. While it is open, no other window can be worked.
struct RuleFileWindow : Form {
  bool RuleFileOpen = false;

  Frame fraRuleFileIntro{"Please Note"};
  Label lblRuleFileIntro;
  Label lblRuleFile{"File Location:"};
  Label lblRuleFilePathCurrent;
  Label lblRuleFileName{"Current FileName:"};
  Label lblRuleFileNameCurrent;
  Label lblRuleFileNameNew{"Enter New FileName:"};
  TextBox txtRuleFileName;
  Toolbar tbrButtons{"imlButtons",
                     {{"Save", "Save   ", "Save the Rules under this FileName", "Save"},
                      {"Cancel", "Cancel   ", "Keep the Current FileName", "Cancel"}}};
};

}  // namespace velmora
