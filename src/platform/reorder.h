#pragma once

#include <cstddef>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

namespace velmora {

/// Puts values into a new order: value `order[i]` comes to stand at `i`. `order` holds each number from 0 up to the
/// count of values once.
template <class T>
void reorder(std::span<T> values, std::span<const std::size_t> order) {
  std::vector<T> former(std::make_move_iterator(values.begin()), std::make_move_iterator(values.end()));
  for (std::size_t i = 0; i < order.size(); ++i) values[i] = std::move(former[order[i]]);
}

}  // namespace velmora
