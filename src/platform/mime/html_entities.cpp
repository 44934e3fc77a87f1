#include "platform/mime/html_entities.h"

#include <libxml/HTMLparser.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <unordered_map>

#include "platform/ascii.h"
#include "platform/characters.h"

namespace velmora::mime {

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t lastCharacter = 0x10FFFF;

/// No name is longer.
constexpr std::size_t longestName = 10;

/// The first names of all, which have always done without the semicolon.
constexpr char32_t lastOfOldNames = 0xFF;

using Names = std::unordered_map<std::string_view, char32_t>;

/// The library has a table, but looks through all of it for each name.
const Names& names() {
  static const Names all = [] {
    constexpr unsigned last = 0x2666;
    Names found;
    for (unsigned code = 1; code <= last; ++code) {
      if (const htmlEntityDesc* const entity = htmlEntityValueLookup(code)) found.emplace(entity->name, code);
    }
    return found;
  }();
  return all;
}

struct Reference {
  char32_t code;
  std::size_t size;  ///< bytes of the text that it takes
};

int valueOf(char c, int base) {
  const int value = ascii::isDigit(c) ? c - '0' : ascii::isLetter(c) ? (c | 0x20) - 'a' + 10 : base;
  return value < base ? value : -1;
}

/// The number behind "&#".
std::optional<Reference> numbered(std::string_view text) {
  const bool isHexadecimal = text.size() > 2 && (text[2] | 0x20) == 'x';
  const int base = isHexadecimal ? 16 : 10;
  const std::size_t begin = isHexadecimal ? 3 : 2;
  std::size_t end = begin;
  char32_t code = 0;
  for (; end < text.size() && valueOf(text[end], base) >= 0; ++end)
    code = std::min(code * static_cast<char32_t>(base) + static_cast<char32_t>(valueOf(text[end], base)),
                    lastCharacter + 1);
  if (end == begin) return std::nullopt;
  const bool isCharacter = code > 0 && code <= lastCharacter && (code < 0xD800 || code > 0xDFFF);
  return Reference{isCharacter ? code : replacement, end + (text.substr(end).starts_with(';') ? 1U : 0U)};
}

std::optional<Reference> oldName(std::string_view name, std::string_view text, HtmlPlace place) {
  for (std::size_t size = name.size(); size > 1; --size) {
    const auto found = names().find(name.substr(0, size));
    if (found == names().end() || found->second > lastOfOldNames) continue;
    const std::string_view next = text.substr(1 + size, 1);
    const bool goesOn = !next.empty() && (ascii::isLetter(next[0]) || ascii::isDigit(next[0]) || next[0] == '=');
    if (goesOn && place == HtmlPlace::Attribute) return std::nullopt;
    return Reference{found->second, 1 + size};
  }
  return std::nullopt;
}

/// The reference that the text begins with, where "&" stands.
std::optional<Reference> referenceIn(std::string_view text, HtmlPlace place) {
  if (text.substr(1, 1) == "#") return numbered(text);
  std::size_t end = 1;
  while (end < text.size() && end <= longestName && (ascii::isLetter(text[end]) || ascii::isDigit(text[end]))) ++end;
  const std::string_view name = text.substr(1, end - 1);
  if (text.substr(end, 1) == ";") {
    if (const auto found = names().find(name); found != names().end()) return Reference{found->second, end + 1};
  }
  return oldName(name, text, place);
}

}  // namespace

std::string decodeEntities(std::string_view html, HtmlPlace place) {
  std::string text;
  text.reserve(html.size());
  for (;;) {
    const auto ampersand = html.find('&');
    text.append(html.substr(0, ampersand));
    if (ampersand == html.npos) return text;
    html.remove_prefix(ampersand);
    if (const auto reference = referenceIn(html, place)) {
      std::array<char, 4> character{};
      text.append(character.data(), text::encode(reference->code, character.data()));
      html.remove_prefix(reference->size);
    } else {
      text += '&';
      html.remove_prefix(1);
    }
  }
}

}  // namespace velmora::mime
