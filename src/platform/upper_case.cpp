#include <algorithm>
#include <array>
#include <cstdint>
#include <locale>
#include <stdexcept>

#include "platform/characters.h"
#include "platform/text.h"

namespace velmora::text {

namespace {

/// The letters of all scripts, where the system knows them; otherwise those from A to Z.
const std::ctype<wchar_t>& letters() {
  static const std::locale locale = [] {
    try {
      return std::locale("C.UTF-8");
    } catch (const std::runtime_error&) {
      return std::locale::classic();
    }
  }();
  return std::use_facet<std::ctype<wchar_t>>(locale);
}

char32_t upperByLocale(char32_t code) {
  const auto wide = static_cast<wchar_t>(code);
  return static_cast<char32_t>(wide) == code ? static_cast<char32_t>(letters().toupper(wide)) : code;
}

/// The locale is slow to ask, and nearly all text keeps to the characters of at most three bytes.
using UpperCase = std::array<char32_t, 0x10000>;
const UpperCase& upperCase() {
  static const UpperCase table = [] {
    UpperCase result{};
    for (char32_t code = 0; code < result.size(); ++code) result.at(code) = upperByLocale(code);
    return result;
  }();
  return table;
}

char upperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

/// Bytes that are turned in one go where all are ASCII.
using Block = std::array<char, 32>;

bool isAscii(const Block& block) {
  unsigned char bits = 0;
  for (const char c : block) bits |= static_cast<unsigned char>(c);
  return bits < 0x80;
}

/// Turns a text of any characters, one by one. Returns how many bytes it takes then.
std::size_t writeUpper(std::string_view text, const UpperCase& table, char* bytes) {
  char* end = bytes;
  while (!text.empty()) {
    const std::size_t size = characterSize(text);
    if (size == 1) {
      *end++ = upperAscii(text.front());
    } else {
      const char32_t code = decoded(text.substr(0, size));
      end += encode(code < table.size() ? table[code] : upperByLocale(code), end);
    }
    text.remove_prefix(size);
  }
  return static_cast<std::size_t>(end - bytes);
}

/// How much of the text, from its beginning, to turn one by one: a block or a little more, whole characters.
std::size_t blockOfCharacters(std::string_view text) {
  std::size_t size = std::min(Block().size(), text.size());
  while (!isBoundary(text, size)) ++size;
  return size;
}

}  // namespace

std::string upper(std::string_view text) {
  const UpperCase& table = upperCase();
  std::string result(text.size() + text.size() / 2, '\0');  // two bytes may become three
  std::size_t size = 0;
  std::size_t at = 0;
  Block block;
  while (at < text.size()) {
    const bool whole = text.copy(block.data(), block.size(), at) == block.size();
    if (whole && isAscii(block)) {
      for (char& c : block) c = upperAscii(c);
      std::copy(block.begin(), block.end(), &result[size]);
      at += block.size();
      size += block.size();
      continue;
    }
    const auto characters = text.substr(at, blockOfCharacters(text.substr(at)));
    size += writeUpper(characters, table, &result[size]);
    at += characters.size();
  }
  result.resize(size);
  return result;
}

}  // namespace velmora::text
