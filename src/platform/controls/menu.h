#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "platform/controls/property.h"

namespace velmora {

/// An entry's caption is its text, "|#" and the key of its picture; "-" is a separator.
struct MenuEntry {
  Property<std::string> Caption;
  Property<bool> Enabled = true;
  std::function<void()> Click = {};
};

/// A menu that opens at the pointer, or where the key that asked for it works.
struct PopupMenu {
  std::string ImageList;
  std::vector<MenuEntry*> Entries;  ///< in order; they stand beside the menu and live as long
  Signal<> opened;

  void PopUp() const { opened.raise(); }
};

}  // namespace velmora
