#pragma once

#include <deque>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/controls/property.h"
#include "platform/failure.h"

namespace velmora {

class Toolbar;

/// One button of a toolbar. Its key never changes.
struct Button {
  std::string Key;
  Property<std::string> Caption;
  Property<std::string> ToolTipText;
  Property<std::string> Image;  ///< key in the toolbar's image list
  Property<bool> Enabled = true;
  Property<std::string> Keys;     ///< that press it, "Ctrl+P"; blank for none
  std::string Tag;                ///< what the program notes on the button
  std::function<void()> pressed;  ///< set by the toolbar

  /// What the user does to it. A disabled button doesn't react.
  void click() const {
    if (Enabled) pressed();
  }
};

/// A row of buttons, addressed by key.
class Toolbar {
 public:
  struct ButtonTexts {
    std::string Key;
    std::string Caption;
    std::string ToolTipText;
    std::string Image;
    std::string Keys = {};
  };

  Toolbar(std::string imageList, std::initializer_list<ButtonTexts> buttons) : ImageList(std::move(imageList)) {
    for (const auto& texts : buttons) add(texts);
  }

  /// Throws subscriptFailure for a key that no button has.
  Button& operator[](std::string_view key) {
    for (auto& button : Buttons) {
      if (button.Key == key) return button;
    }
    throw subscriptFailure();
  }

  const std::string ImageList;
  std::deque<Button> Buttons;
  Property<bool> Visible = true;
  Property<bool> Enabled = true;
  Property<bool> Raised = false;  ///< its buttons stand out, also without the pointer over them
  std::function<void(Button&)> ButtonClick;

 private:
  void add(const ButtonTexts& texts) {
    Button& button = Buttons.emplace_back();
    button.Key = texts.Key;
    button.Caption = texts.Caption;
    button.ToolTipText = texts.ToolTipText;
    button.Image = texts.Image;
    button.Keys = texts.Keys;
    button.pressed = [this, &button] {
      if (Enabled && ButtonClick) ButtonClick(button);
    };
  }
};

}  // namespace velmora
