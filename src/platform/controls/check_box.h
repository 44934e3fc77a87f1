#pragma once

#include <cstdint>
#include <string>

#include "platform/controls/property.h"

namespace velmora {

/// A switch: `Value` is 1 or 0.
struct CheckBox {
  std::string Caption;
  Property<std::int16_t> Value = std::int16_t{0};
  Property<bool> Visible = true;
  Property<bool> Enabled = true;
};

}  // namespace velmora
