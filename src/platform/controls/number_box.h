#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/controls/property.h"
#include "platform/text.h"

namespace velmora {

/// A whole number that the user types, or changes by two buttons. It corrects what he types: nothing is `WhenEmpty`,
/// what lies beyond the bounds is the nearer of the two, and what is no number leaves the value as it is. A value that
/// the program sets may lie beyond them.
struct NumberBox {
  Property<std::int16_t> Least = std::int16_t{0};
  Property<std::int16_t> Most = std::int16_t{0};
  std::int16_t WhenEmpty = 0;
  bool TakesZero = false;  ///< when it is typed, even where the buttons don't lead there
  Property<std::int16_t> Value = std::int16_t{0};
  Property<bool> Enabled = true;

  /// What a text stands for that the user has brought it to; nothing where it is no number.
  std::optional<std::int16_t> read(std::string_view text) const {
    if (text::trim(text).empty()) return WhenEmpty;
    const auto number = text::toNumber(text);
    if (!number) return std::nullopt;
    if (TakesZero && *number == 0) return std::int16_t{0};
    return static_cast<std::int16_t>(std::clamp<std::int64_t>(*number, Least.get(), Most.get()));
  }

  /// What the user does to it.
  void Type(std::string_view text) {
    if (const auto number = read(text)) Value = *number;
  }
};

}  // namespace velmora
