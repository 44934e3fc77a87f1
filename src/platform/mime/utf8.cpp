#include "platform/mime/utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "platform/characters.h"
#include "platform/mail_bounds.h"

namespace velmora::mime {

namespace {

constexpr std::array<char32_t, 32> Windows1252 = {0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD,
                                                  0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

unsigned byteAt(std::string_view text, std::size_t index) { return static_cast<unsigned char>(text[index]); }

bool within(unsigned value, unsigned first, unsigned last) { return value >= first && value <= last; }

/// The bytes that a character with this first byte has, 0 for a byte that begins none.
std::size_t sequenceSize(unsigned first) {
  if (first < 0x80) return 1;
  if (within(first, 0xC2, 0xDF)) return 2;
  if (within(first, 0xE0, 0xEF)) return 3;
  if (within(first, 0xF0, 0xF4)) return 4;
  return 0;
}

/// The size of the valid character at `index`, 0 where there is none.
std::size_t characterSize(std::string_view text, std::size_t index) {
  const std::size_t size = text::characterSize(text.substr(index));
  return size == 1 && byteAt(text, index) >= 0x80 ? 0 : size;
}

/// Where the first byte from `begin` on stands that isn't ASCII. Most text is, and is looked at in words.
std::size_t asciiEnd(std::string_view text, std::size_t begin) {
  constexpr std::uint64_t highBits = 0x8080808080808080;
  std::uint64_t word = 0;
  std::size_t i = begin;
  for (; i + sizeof word <= text.size(); i += sizeof word) {
    std::memcpy(&word, text.data() + i, sizeof word);
    if ((word & highBits) != 0) break;
  }
  while (i < text.size() && byteAt(text, i) < 0x80) ++i;
  return i;
}

/// Where the first byte from `begin` on stands that is part of no character.
std::size_t validEnd(std::string_view text, std::size_t begin) {
  for (std::size_t i = asciiEnd(text, begin); i < text.size(); i = asciiEnd(text, i)) {
    const std::size_t size = characterSize(text, i);
    if (size == 0) return i;
    i += size;
  }
  return text.size();
}

void appendWindows1252(std::string& text, unsigned byte) {
  std::array<char, 4> bytes{};
  text.append(bytes.data(), text::encode(byte < 0xA0 ? Windows1252[byte - 0x80] : byte, bytes.data()));
}

/// Needs no second look, as what may begin a control character does.
constexpr auto isOrdinary = [](unsigned char byte) { return byte >= 0x20 && byte != 0x7F && byte != 0xC2; };

bool isControl(unsigned byte) { return byte < 0x20 || byte == 0x7F; }

bool isC1(std::string_view text, std::size_t index) {
  return byteAt(text, index) == 0xC2 && byteAt(text, index + 1) < 0xA0;
}

bool isLineSeparator(std::string_view character) { return character == "\u2028" || character == "\u2029"; }

}  // namespace

bool isUtf8(std::string_view bytes) { return validEnd(bytes, 0) == bytes.size(); }

std::string toUtf8(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const std::size_t end = validEnd(bytes, i);
    text.append(bytes.substr(i, end - i));
    if (end < bytes.size()) appendWindows1252(text, byteAt(bytes, end));
    i = end;
  }
  return text;
}

std::size_t incompleteEnd(std::string_view bytes) {
  constexpr std::size_t longest = 4;
  for (std::size_t back = 1; back < longest && back <= bytes.size(); ++back) {
    const unsigned byte = byteAt(bytes, bytes.size() - back);
    if (!within(byte, 0x80, 0xBF)) return sequenceSize(byte) > back ? back : 0;
  }
  return 0;
}

std::string oneLine(std::string_view utf8, std::size_t maxBytes) {
  std::string line;
  bool gap = false;
  for (std::size_t i = 0; i < utf8.size() && line.size() <= maxBytes;) {
    const std::size_t size = characterSize(utf8, i);
    const std::string_view character = utf8.substr(i, size);
    i += size;
    if (isControl(byteAt(character, 0)) || isLineSeparator(character)) {
      gap = true;
      continue;
    }
    if (gap && !line.empty() && character != " " && line.back() != ' ') line += ' ';
    gap = false;
    if (character == " " && line.empty()) continue;
    if (size == 2 && isC1(character, 0))
      appendWindows1252(line, byteAt(character, 1));
    else
      line.append(character);
  }
  mail_bounds::cut(line, maxBytes, "…");
  line.erase(line.find_last_not_of(' ') + 1);
  return line;
}

void LineWriter::add(std::string_view utf8) {
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const unsigned byte = byteAt(utf8, i);
    if (byte == '\r' || (byte == '\n' && !afterReturn_)) {
      text_ += "\r\n";
    } else if (byte == 0xC2 && isC1(utf8, i)) {
      appendWindows1252(text_, byteAt(utf8, ++i));
    } else if (isOrdinary(static_cast<unsigned char>(byte))) {
      const auto end = std::find_if_not(utf8.begin() + static_cast<std::ptrdiff_t>(i) + 1, utf8.end(), isOrdinary);
      const auto size = static_cast<std::size_t>(end - utf8.begin()) - i;
      text_.append(utf8, i, size);
      i += size - 1;
    } else if (byte == '\t' || byte == 0xC2) {
      text_ += utf8[i];
    }
    afterReturn_ = byte == '\r';
  }
}

}  // namespace velmora::mime
