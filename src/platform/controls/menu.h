#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/controls/property.h"

namespace velmora {

/// An entry's caption is its text, "|#" and the key of its picture; "-" is a separator.
struct MenuEntry {
  Property<std::string> Caption;
  Property<bool> Enabled = true;
  std::function<void()> Click = {};
  Property<std::string> Keys = {};  ///< that choose it, "Ctrl+O"; blank for none
};

/// From the top of a menu to its bottom, each 0x00BBGGRR.
struct MenuColours {
  std::int32_t top = 0;
  std::int32_t middle = 0;
  std::int32_t bottom = 0;

  bool operator==(const MenuColours&) const = default;
};

/// A menu that opens at the pointer, or where the key that asked for it works.
struct PopupMenu {
  std::string ImageList;
  std::vector<MenuEntry*> Entries;  ///< in order; they stand beside the menu and live as long
  Signal<> opened;
  Property<std::optional<MenuColours>> Colours = {};  ///< none: it looks as the desktop's menus do

  void PopUp() const { opened.raise(); }
};

}  // namespace velmora
