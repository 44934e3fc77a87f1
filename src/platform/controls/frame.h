#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/controls/property.h"

namespace velmora {

/// A part of a window that shows, hides, enables and disables what stands in it.
struct Frame {
  Property<bool> Visible = true;
  Property<bool> Enabled = true;
};

struct Label {
  Property<std::string> Caption;
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
  Signal<> restoreSize;          ///< asks the desktop for the size that the window was designed with
  std::function<void()> Resize;  ///< the state or the size has changed
  std::function<void()> Close;   ///< the user asked to close the window
};

}  // namespace velmora
