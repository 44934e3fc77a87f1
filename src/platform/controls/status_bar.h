#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/controls/property.h"
#include "platform/failure.h"

namespace velmora {

/// The row of five panels at the foot of a window.
class StatusBar {
 public:
  struct Panel {
    Property<std::string> Text;
    Property<std::string> Picture;  ///< key in the list's pictures, blank for none
    std::int32_t Width = 0;         ///< kept by the desktop
  };

  static constexpr int panelCount = 5;

  /// Numbered from 1. Throws subscriptFailure.
  Panel& Panels(int number) {
    if (number < 1 || number > panelCount) throw subscriptFailure();
    return panels_[static_cast<std::size_t>(number - 1)];
  }

 private:
  std::array<Panel, panelCount> panels_;
};

}  // namespace velmora
