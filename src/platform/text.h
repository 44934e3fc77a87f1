#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velmora::text {

/// Positions and lengths count characters of UTF-8. A byte that is part of no character counts as one of its own, so
/// that every function is valid on any bytes and loses none.
std::string_view left(std::string_view text, std::size_t count);

/// The last `count` characters.
std::string_view right(std::string_view text, std::size_t count);

std::size_t length(std::string_view text);

/// As many whole characters as `most` bytes hold.
std::string_view leftBytes(std::string_view text, std::size_t most);

/// Without the blanks at both ends.
std::string_view trim(std::string_view text);

/// Every `what`, which is not blank, replaced by `with`.
std::string replaceAll(std::string_view text, std::string_view what, std::string_view with);

/// Every letter in upper case, where it has one of its own.
std::string upper(std::string_view text);

/// The offset in bytes of the first place where the characters of `what`, which isn't empty, stand in `text`; npos
/// where there is none.
std::size_t find(std::string_view text, std::string_view what);

/// Equal without regard to the case of the letters A to Z.
bool equalsIgnoringCase(std::string_view a, std::string_view b);
bool endsWithIgnoringCase(std::string_view text, std::string_view end);

/// A whole number in decimal digits, with blanks around it and a sign in front allowed; nothing for any other text.
std::optional<std::int64_t> toNumber(std::string_view text);

/// The same for a number that must be one: throws typeMismatchFailure for any other text and overflowFailure for one
/// that doesn't fit.
std::int32_t toInt32(std::string_view text);

/// The number that a text is, which may have a fraction and an exponent, rounded to the nearest whole one, half to
/// even. Throws typeMismatchFailure for any other text and overflowFailure for one that doesn't fit.
std::int16_t toRoundedInt16(std::string_view text);

/// Throws overflowFailure where the value doesn't fit.
std::int16_t toInt16(std::int64_t value);

}  // namespace velmora::text
