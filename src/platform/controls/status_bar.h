#pragma once

#include <array>
#include <cstdint>
#include <functional>
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
    std::int32_t Left = 0;          ///< from the bar's own left edge; kept by the desktop, like the width
    std::int32_t Width = 0;
  };

  static constexpr int panelCount = 5;

  /// Numbered from 1. Throws subscriptFailure.
  Panel& Panels(int number) {
    if (number < 1 || number > panelCount) throw subscriptFailure();
    return panels_[static_cast<std::size_t>(number - 1)];
  }

  /// The number of the panel at `x`, 0 for none. A panel reaches up to the next one's left edge.
  int PanelAt(std::int32_t x) const {
    const Panel& last = panels_.back();
    if (x >= Left + last.Left + last.Width) return 0;
    int number = panelCount;
    while (number > 0 && x < Left + panels_[static_cast<std::size_t>(number - 1)].Left) --number;
    return number;
  }

  std::int32_t Left = 0;                                          ///< in the window; kept by the desktop
  Property<std::string> ToolTipText;                              ///< what comes up while the pointer rests on the bar
  std::function<void(std::int32_t x, std::int32_t y)> MouseMove;  ///< the pointer is over this place of the window

 private:
  std::array<Panel, panelCount> panels_;
};

}  // namespace velmora
