#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/controls/property.h"

namespace velmora {

/// Buttons of which one is chosen.
struct OptionGroup {
  std::vector<std::string> Captions;
  Property<std::int16_t> Value = std::int16_t{0};  ///< the button's number from 1; of any other number, none is chosen
  std::function<void()> Click = {};                ///< the user has chosen one
  Property<bool> Enabled = true;

  /// What the user does to it.
  void Choose(std::int16_t number) {
    Value = number;
    if (Click) Click();
  }
};

}  // namespace velmora
