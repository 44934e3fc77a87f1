#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/controls/property.h"

namespace velmora {

/// A tree of one storey, whose nodes are numbered from 1.
struct TreeView {
  struct Node {
    std::string Text;
    std::string Picture;
  };

  std::string ImageList;
  std::vector<Node> Nodes;
  Property<std::int16_t> SelectedItem = std::int16_t{1};
  std::function<void()> NodeClick = {};  ///< a node was selected, be it by the keyboard
  Signal<> focus = {};
  void SetFocus() const { focus.raise(); }

  /// What the user does to it.
  void Select(std::int16_t node) {
    SelectedItem = node;
    if (NodeClick) NodeClick();
  }
};

}  // namespace velmora
