#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/controls/property.h"

namespace velmora {

/// The colour of a text that has none of its own.
inline constexpr std::int32_t ordinaryColour = -1;

/// A part of a window that shows, hides, enables and disables what stands in it.
struct Frame {
  Property<std::string> Caption = {};
  Property<bool> Visible = true;
  Property<bool> Enabled = true;
  Property<std::int32_t> ForeColour = ordinaryColour;  ///< of the caption, 0x00BBGGRR
};

struct Label {
  Property<std::string> Caption = {};
  Property<bool> Visible = true;
  std::function<void()> Click = {};  ///< a label with this event is a link
  Property<bool> Enabled = true;
  Property<std::int32_t> ForeColour = ordinaryColour;  ///< 0x00BBGGRR
};

/// A picture of an image list.
struct Image {
  Property<std::string> Key;
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

}  // namespace velmora
