#pragma once

#include <functional>
#include <string>

#include "platform/controls/property.h"

namespace velmora {

/// One line of text: what the program set, or what the user made of it.
struct TextBox {
  int MaxLength = 0;  ///< characters that the user can bring it to, 0 for any number
  Property<std::string> Text = {};
  Property<bool> Enabled = true;
  std::function<void()> Enter = {};  ///< the key was pressed in it
  Signal<> focus = {};
  void SetFocus() const { focus.raise(); }
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
