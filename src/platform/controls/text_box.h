#pragma once

#include <string>

#include "platform/controls/property.h"

namespace velmora {

/// One line of text that can be read, selected and copied.
struct TextBox {
  Property<std::string> Text;
};

/// A text of many lines, of any size. It stays as it is until it is set anew.
struct RichTextBox {
  Property<std::string> Text;
  Property<bool> Visible = true;
  Signal<> focus;
  void SetFocus() const { focus.raise(); }
};

/// The text that comes up beside the pointer while it rests on a control. Blank: none does.
struct ToolTip {
  Property<std::string> ToolText;
  int DelayTime = 0;  ///< milliseconds for which it stays
};

}  // namespace velmora
