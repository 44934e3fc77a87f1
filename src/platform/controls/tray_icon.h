#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/controls/property.h"

namespace velmora {

/// The program's entry in the desktop's tray.
struct TrayIcon {
  /// Numbers of imlTrayIcons, each laid upon those before it. It is the main window's icon as well.
  Property<std::vector<std::int16_t>> Picture;
  Property<std::string> Tip;             ///< lines end with CR LF
  Property<bool> Visible = false;        ///< the program wants to be in the tray
  Property<bool> TrayPresent = true;     ///< the desktop has a tray; it says so itself
  Property<bool> TrayDrawsMenu = false;  ///< the tray draws the program's menu itself, in its own colours
  std::function<void()> LeftButtonDown;
  std::function<void()> RightButtonUp;
};

}  // namespace velmora
