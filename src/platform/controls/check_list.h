#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/controls/property.h"
#include "platform/failure.h"

namespace velmora {

/// A list of texts with a check box each, numbered from 1.
class CheckList {
 public:
  struct Item {
    std::string Text;
    bool Checked = false;

    bool operator==(const Item&) const = default;
  };

  Property<bool> Enabled = true;
  Property<std::int16_t> ListIndex = std::int16_t{0};  ///< the item that is chosen, 0 for none
  std::function<void()> Click;                         ///< the user has chosen an item
  std::function<void(std::int16_t)> ItemCheck;         ///< the user has ticked an item, or taken its tick away
  std::function<void()> DeleteKey;                     ///< the key was pressed on the list
  Signal<> focus;
  Signal<> itemsChanged;  ///< all of them may have
  Signal<std::int16_t> itemChanged;

  void SetFocus() const { focus.raise(); }

  const std::vector<Item>& Items() const { return items_; }

  /// Throws subscriptFailure.
  const Item& operator[](std::int16_t number) const { return items_[index(number)]; }

  /// Replaces all items in one change. Raises no event of the user's, and leaves ListIndex to the caller.
  void SetItems(std::vector<Item> items) {
    if (items == items_) return;
    items_ = std::move(items);
    itemsChanged.raise();
  }

  /// Replaces one, likewise. Throws subscriptFailure.
  void SetItem(std::int16_t number, Item item) {
    Item& present = items_[index(number)];
    if (present == item) return;
    present = std::move(item);
    itemChanged.raise(number);
  }

  /// What the user does to it. Throw subscriptFailure.
  void Choose(std::int16_t number) {
    index(number);
    ListIndex = number;
    if (Click) Click();
  }
  void Tick(std::int16_t number, bool on) {
    SetItem(number, {items_[index(number)].Text, on});
    if (ItemCheck) ItemCheck(number);
  }

 private:
  std::size_t index(std::int16_t number) const {
    if (number < 1 || static_cast<std::size_t>(number) > items_.size()) throw subscriptFailure();
    return static_cast<std::size_t>(number - 1);
  }

  std::vector<Item> items_;
};

}  // namespace velmora
