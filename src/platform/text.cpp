#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <locale>
#include <stdexcept>

#include "platform/failure.h"

namespace velmora::text {

namespace {

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

std::size_t announcedLength(char first) {
  const auto byte = static_cast<unsigned char>(first);
  if (byte >= 0xC2 && byte <= 0xDF) return 2;
  if (byte >= 0xE0 && byte <= 0xEF) return 3;
  if (byte >= 0xF0 && byte <= 0xF4) return 4;
  return 1;
}

/// By its first two bytes, a character is none that has a shorter form, no half of a pair, and not beyond the last one
/// (RFC 3629 section 4).
bool isShortest(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  const auto second = text.size() > 1 ? static_cast<unsigned char>(text[1]) : 0U;
  if (first == 0xE0) return second >= 0xA0;
  if (first == 0xED) return second < 0xA0;
  if (first == 0xF0) return second >= 0x90;
  return first != 0xF4 || second < 0x90;
}

/// Bytes of the character that `text`, which isn't empty, begins with.
std::size_t characterSize(std::string_view text) {
  const std::size_t announced = announcedLength(text.front());
  if (announced > text.size()) return 1;
  const auto rest = text.substr(1, announced - 1);
  return std::all_of(rest.begin(), rest.end(), isContinuation) && isShortest(text) ? announced : 1;
}

char32_t decoded(std::string_view character) {
  const auto first = static_cast<unsigned char>(character.front());
  auto code = static_cast<char32_t>(first & (0xFFU >> (character.size() + 1)));
  for (const char c : character.substr(1)) code = code << 6U | (static_cast<unsigned char>(c) & 0x3FU);
  return code;
}

std::size_t encodedSize(char32_t code) { return code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4; }

std::string encoded(char32_t code) {
  const std::size_t size = encodedSize(code);
  if (size == 1) return {static_cast<char>(code)};
  std::string bytes(size, '\0');
  for (std::size_t i = size - 1; i > 0; --i, code >>= 6U) bytes[i] = static_cast<char>(0x80U | (code & 0x3FU));
  bytes[0] = static_cast<char>((0xF00U >> size & 0xFFU) | code);
  return bytes;
}

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

char32_t upper(char32_t code) {
  const auto wide = static_cast<wchar_t>(code);
  return static_cast<char32_t>(wide) == code ? static_cast<char32_t>(letters().toupper(wide)) : code;
}

}  // namespace

std::string_view left(std::string_view text, std::size_t count) {
  std::string_view rest = text;
  for (; count > 0 && !rest.empty(); --count) rest.remove_prefix(characterSize(rest));
  return text.substr(0, text.size() - rest.size());
}

std::string_view leftBytes(std::string_view text, std::size_t most) {
  std::size_t size = 0;
  for (std::size_t next = 0; size < text.size(); size += next) {
    next = characterSize(text.substr(size));
    if (size + next > most) break;
  }
  return text.substr(0, size);
}

std::string_view trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string replaceAll(std::string_view text, std::string_view what, std::string_view with) {
  std::string result;
  for (auto at = text.find(what); at != std::string_view::npos; at = text.find(what)) {
    result.append(text.substr(0, at)).append(with);
    text.remove_prefix(at + what.size());
  }
  return result.append(text);
}

std::string upper(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const std::size_t size = characterSize(text);
    const char first = text.front();
    if (size > 1) {
      result += encoded(upper(decoded(text.substr(0, size))));
    } else {
      result += first >= 'a' && first <= 'z' ? static_cast<char>(first - 'a' + 'A') : first;
    }
    text.remove_prefix(size);
  }
  return result;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

bool endsWithIgnoringCase(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && equalsIgnoringCase(text.substr(text.size() - end.size()), end);
}

std::optional<std::int64_t> toNumber(std::string_view text) {
  text = trim(text);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::invalid_argument || end != text.data() + text.size()) return std::nullopt;
  if (error == std::errc::result_out_of_range) {
    return text.starts_with('-') ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
  }
  return value;
}

std::int32_t toInt32(std::string_view text) {
  const auto value = toNumber(text);
  if (!value) throw typeMismatchFailure();
  if (*value < std::numeric_limits<std::int32_t>::min() || *value > std::numeric_limits<std::int32_t>::max()) {
    throw overflowFailure();
  }
  return static_cast<std::int32_t>(*value);
}

std::int16_t toInt16(std::int64_t value) {
  if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max()) {
    throw overflowFailure();
  }
  return static_cast<std::int16_t>(value);
}

}  // namespace velmora::text
