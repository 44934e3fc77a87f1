#include "platform/mime/raw_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "platform/ascii.h"
#include "platform/characters.h"
#include "platform/mime/charset.h"
#include "platform/mime/charset_names.h"
#include "platform/mime/utf8.h"

namespace velmora::mime {

namespace {

bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

/// Signs, digits and blanks. In some charsets letters are the second bytes of characters.
std::string signsOf(std::string_view text) {
  std::string signs;
  std::ranges::copy_if(text, std::back_inserter(signs), [](char c) { return isAscii(c) && c < '@'; });
  return signs;
}

/// A single character within a word that has taken a letter into itself was none: "J\xF6rg" isn't Chinese.
bool takesLettersOfWords(std::string_view utf8, std::string_view given) {
  if (std::ranges::count_if(utf8, isAscii) == std::ranges::count_if(given, isAscii)) return false;
  bool isBehindLetter = false;
  while (!utf8.empty()) {
    const std::size_t size = text::characterSize(utf8);
    const bool isBeforeLetter = size < utf8.size() && ascii::isLetter(utf8[size]);
    if (size > 1 && isBehindLetter && isBeforeLetter) return true;
    isBehindLetter = size == 1 && ascii::isLetter(utf8.front());
    utf8.remove_prefix(size);
  }
  return false;
}

/// Has a meaning of its own for ASCII, at least behind some of it.
bool isShifting(std::string_view charset) {
  constexpr std::array<std::string_view, 3> names = {"ISO-2022", "HZ", "UTF-7"};
  return std::ranges::any_of(names, [charset](std::string_view name) { return charset.starts_with(name); });
}

/// Some bytes may be broken, as where the value was cut in the middle of a character.
bool isMostlyUtf8(std::string_view value) {
  constexpr std::size_t most = 2;
  value.remove_suffix(incompleteEnd(value));
  std::size_t valid = 0;
  std::size_t others = 0;
  while (!value.empty()) {
    const std::size_t size = text::characterSize(value);
    if (size > 1)
      valid += size;
    else
      others += isAscii(value.front()) ? 0 : 1;
    value.remove_prefix(size);
  }
  return valid > most * others;
}

/// No sender writes characters for private use. Narrow kana behind a letter are an accent of another charset.
bool isLikely(std::string_view utf8) {
  char before = ' ';
  while (!utf8.empty()) {
    const std::size_t size = text::characterSize(utf8);
    const char32_t code = size > 1 ? text::decoded(utf8.substr(0, size)) : 0;
    const bool isPrivate = (code >= 0xE000 && code <= 0xF8FF) || code >= 0xF0000;
    const bool isNarrowKana = code >= 0xFF61 && code <= 0xFF9F;
    if (isPrivate || code == 0xFFFD || (isNarrowKana && ascii::isLetter(before))) return false;
    before = utf8.front();
    utf8.remove_prefix(size);
  }
  return true;
}

}  // namespace

std::string rawText(Reading& reading, std::string_view value) {
  // Charsets that have something else in the place of ASCII don't leave these as they are.
  constexpr std::string_view signs = "=?<";
  if (reading.charset.empty() || isShifting(systemCharset(reading.charset)) || isMostlyUtf8(value))
    return toUtf8(value);
  const std::string given = std::string(signs).append(value);
  std::string text = toUtf8(reading.converters, given, reading.charset);
  // A character that takes such a sign into itself would hide an address or make another of it.
  const bool isKept = text.starts_with(signs) && signsOf(text) == signsOf(given);
  return isKept && isLikely(text) && !takesLettersOfWords(text, given) ? text.erase(0, signs.size()) : toUtf8(value);
}

}  // namespace velmora::mime
