#pragma once

namespace velmora::ascii {

// The letters and digits of ASCII, whatever the locale is.

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool isSmall(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool isLetter(char c) { return isCapital(c) || isSmall(c); }

constexpr char lower(char c) { return isCapital(c) ? static_cast<char>(c - 'A' + 'a') : c; }
constexpr char upper(char c) { return isSmall(c) ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace velmora::ascii
