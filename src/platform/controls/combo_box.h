#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/controls/property.h"

namespace velmora {

/// A choice of one text out of a list.
struct ComboBox {
  Property<std::vector<std::string>> List = {};
  Property<std::string> Text = {};  ///< the choice; one that isn't in the list shows all the same, a blank one is none
  Property<bool> Enabled = true;
  std::function<void()> Click = {};  ///< the user has chosen, be it what was chosen before

  /// What the user does to it.
  void Choose(const std::string& item) {
    Text = item;
    if (Click) Click();
  }
};

}  // namespace velmora
