#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/controls/property.h"

namespace velmora {

/// A part of a window that shows, hides, enables and disables what stands in it.
struct Frame {
  Property<std::string> Caption;
  Property<bool> Visible = true;
  Property<bool> Enabled = true;
};

struct Label {
  Property<std::string> Caption;
  Property<bool> Visible = true;
  std::function<void()> Click = {};  ///< a label with this event is a link
};

/// A picture of an image list.
struct Image {
  std::string Key;
  Property<bool> Visible = true;
};

/// Shows how far `Value` has come from `Min` to `Max`.
struct ProgressBar {
  Property<bool> Visible = false;
  Property<std::int32_t> Min = 0;
  Property<std::int32_t> Max = 100;
  Property<std::int32_t> Value = 0;
  Property<std::int32_t> Width = 0;  ///< of the desktop's units
};

/// A control that only takes the focus away from others.
struct FocusTaker {
  Signal<> focus;
  void SetFocus() const { focus.raise(); }
};

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
