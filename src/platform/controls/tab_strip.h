#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>

#include "platform/controls/property.h"
#include "platform/failure.h"

namespace velmora {

enum class MouseButton { Left, Middle, Right };

/// A row of tabs, numbered from 1, of which one is selected (0: none, while there are no tabs). Positions count from
/// the left edge of the first tab, in the desktop's units.
class TabStrip {
 public:
  struct Tab {
    Property<std::string> Caption;
    Property<std::string> Image;
    std::int32_t Width = 0;  ///< kept by the desktop, like the strip's height
  };

  Property<bool> Enabled = true;
  std::function<void()> Click;     ///< the selected tab has changed, or the user pressed a tab
  std::function<void()> GotFocus;  ///< the strip has taken the keyboard focus
  Signal<> added;                  ///< a tab was added at the end
  Signal<> removed;                ///< the last tab was removed
  Signal<> selectionChanged;

  std::int32_t Height = 0;
  std::function<void()> BeforeClick;  ///< a mouse button is about to be pressed on the strip
  std::function<void(MouseButton, std::int32_t x)> MouseDown;
  std::function<void()> MouseUp;
  /// A tab is being dragged, and the pointer is here now.
  std::function<void(std::int32_t x, std::int32_t y)> DragOver;
  std::function<void(std::int32_t x)> DragDrop;       ///< it was let go over the strip
  Property<bool> Dragging = false;                    ///< the program begins and ends it; the desktop ends it too
  Property<std::int16_t> DragIcon = std::int16_t{1};  ///< the pointer meanwhile: a picture of imlDragIcons

  int Count() const { return static_cast<int>(tabs_.size()); }

  /// Throws subscriptFailure.
  Tab& Tabs(int number) {
    if (number < 1 || number > Count()) throw subscriptFailure();
    return tabs_[static_cast<std::size_t>(number - 1)];
  }

  void Add(const std::string& caption, const std::string& image) {
    Tab& tab = tabs_.emplace_back();
    tab.Caption = caption;
    tab.Image = image;
    if (selected_ == 0) selected_ = 1;
    added.raise();
  }

  /// Removes the last tab. A selection that was there moves on to the one before; no Click is raised.
  void RemoveLast() {
    if (tabs_.empty()) return;
    tabs_.pop_back();
    selected_ = std::min(selected_, Count());
    removed.raise();
  }

  int SelectedItem() const { return selected_; }

  /// Selects a tab. Raises Click where that changes something. Throws subscriptFailure.
  void SelectTab(int number) {
    if (number < 1 || number > Count()) throw subscriptFailure();
    if (number == selected_) return;
    selected_ = number;
    selectionChanged.raise();
    if (Click) Click();
  }

 private:
  std::deque<Tab> tabs_;
  int selected_ = 0;
};

}  // namespace velmora
