#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/controls/property.h"

namespace velmora {

/// A field of one colour, 0x00BBGGRR, which may be there to be clicked.
struct ColourBox {
  Property<std::int32_t> BackColour = 0;
  std::function<void()> Click = {};
  std::string ToolTipText = {};
  Property<bool> Enabled = true;
};

}  // namespace velmora
