#pragma once

#include <string>

#include "platform/controls/property.h"

namespace velmora {

/// A time of the day, hours and minutes, each of which the user changes for itself.
struct TimeBox {
  Property<std::string> Text = std::string("00:00");  ///< "hh:mm"; what the program sets may be no time
  Property<bool> Enabled = true;
};

}  // namespace velmora
