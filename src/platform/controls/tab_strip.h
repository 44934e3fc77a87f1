#pragma once

#include <deque>
#include <functional>
#include <string>

#include "platform/controls/property.h"
#include "platform/failure.h"

namespace velmora {

/// A row of tabs, numbered from 1, of which one is selected (0: none, while there are no tabs).
class TabStrip {
 public:
  struct Tab {
    Property<std::string> Caption;
    Property<std::string> Image;
  };

  Property<bool> Enabled = true;
  std::function<void()> Click;     ///< the selected tab has changed, or the user pressed a tab
  std::function<void()> GotFocus;  ///< the strip has taken the keyboard focus
  Signal<> added;                  ///< a tab was added at the end
  Signal<> selectionChanged;

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
