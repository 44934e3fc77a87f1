#pragma once

#include <array>

#include "platform/controls/form.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/toolbar.h"

namespace velmora {

/// The welcome: tells a new user once how to set up an account.
struct FirstUseWindow : Form {
  bool FirstUseOpen = false;

  Label lblWelcome;
  Label lblVersion;
  Label lblNotice;
  std::array<Label, 6> lblSteps;
  Toolbar tbrButtons{"imlRuleReport", {{"Close", "Close   ", "Close Welcome", "Exit"}}};
};

}  // namespace velmora
