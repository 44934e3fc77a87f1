#pragma once

#include <cstddef>
#include <string_view>

namespace velmora::text {

// The characters of UTF-8 (RFC 3629) in any bytes. A byte that is part of none is a character of its own.

/// Bytes of the character that `text`, which isn't empty, begins with.
inline std::size_t characterSize(std::string_view text) {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const auto continues = [text, byte](std::size_t i) { return i < text.size() && (byte(i) & 0xC0U) == 0x80U; };
  const unsigned first = byte(0);
  if (first < 0xC2 || first > 0xF4 || !continues(1)) return 1;
  if (first < 0xE0) return 2;
  // By its first two bytes, a character is none that has a shorter form, no half of a pair, and not beyond the last
  // one.
  const unsigned second = byte(1);
  if (first < 0xF0) {
    const bool isValid = first == 0xE0 ? second >= 0xA0 : first != 0xED || second < 0xA0;
    return isValid && continues(2) ? 3 : 1;
  }
  const bool isValid = first == 0xF0 ? second >= 0x90 : first != 0xF4 || second < 0x90;
  return isValid && continues(2) && continues(3) ? 4 : 1;
}

/// No character of `text` stands on both sides of this offset.
inline bool isBoundary(std::string_view text, std::size_t offset) {
  constexpr std::size_t longest = 4;
  for (std::size_t back = 1; back < longest && back <= offset && offset < text.size(); ++back) {
    const auto rest = text.substr(offset - back);
    if ((static_cast<unsigned char>(rest.front()) & 0xC0U) != 0x80U) return characterSize(rest) <= back;
  }
  return true;
}

/// The code point of a character of two bytes or more.
inline char32_t decoded(std::string_view character) {
  const auto bits = [character](std::size_t i) { return static_cast<unsigned char>(character[i]) & 0x3FU; };
  if (character.size() == 2) return (bits(0) & 0x1FU) << 6U | bits(1);
  if (character.size() == 3) return (bits(0) & 0x0FU) << 12U | bits(1) << 6U | bits(2);
  return (bits(0) & 0x07U) << 18U | bits(1) << 12U | bits(2) << 6U | bits(3);
}

/// Writes a code point at `bytes`, where there is room for it, and returns how many it takes: four at most.
inline std::size_t encode(char32_t code, char* bytes) {
  const auto continuation = [code](unsigned shift) { return static_cast<char>(0x80U | (code >> shift & 0x3FU)); };
  if (code < 0x80) {
    bytes[0] = static_cast<char>(code);
    return 1;
  }
  if (code < 0x800) {
    bytes[0] = static_cast<char>(0xC0U | code >> 6U);
    bytes[1] = continuation(0);
    return 2;
  }
  if (code < 0x10000) {
    bytes[0] = static_cast<char>(0xE0U | code >> 12U);
    bytes[1] = continuation(6);
    bytes[2] = continuation(0);
    return 3;
  }
  bytes[0] = static_cast<char>(0xF0U | code >> 18U);
  bytes[1] = continuation(12);
  bytes[2] = continuation(6);
  bytes[3] = continuation(0);
  return 4;
}

}  // namespace velmora::text
