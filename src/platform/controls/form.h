#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/controls/property.h"

namespace velmora {

enum class WindowState { Normal, Minimised, Maximised };
enum class MousePointer { Default, Hourglass };

/// A top-level window.
struct Form {
  Property<std::string> Caption;
  Property<bool> Visible = false;
  Property<WindowState> State = WindowState::Normal;
  Property<MousePointer> Pointer = MousePointer::Default;
  Property<bool> AlwaysOnTop = false;  ///< above all other windows
  bool HiddenWithMain = false;         ///< left the screen with the main window, and comes back with it
  Signal<> restoreSize;                ///< asks the desktop for the size that the window was designed with
  Signal<> centre;                     ///< asks the desktop to put the window into the middle of the screen
  Signal<> activate;                   ///< asks the desktop to bring the window forward
  /// How wide a text is in the window's font, in the units of a list's columns. Set by the desktop.
  std::function<std::int32_t(const std::string& text, bool bold)> TextWidth = [](const std::string&, bool) {
    return 0;
  };
  std::function<void()> Help;      ///< the user asked for help with the window
  std::function<void()> Resize;    ///< the state or the size has changed
  std::function<void()> Close;     ///< the user asked to close the window
  std::function<void()> Activate;  ///< the window has become the active one
};

}  // namespace velmora
