#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/ascii.h"
#include "platform/characters.h"
#include "platform/failure.h"

namespace velmora::text {

std::string_view left(std::string_view text, std::size_t count) {
  std::string_view rest = text;
  for (; count > 0 && !rest.empty(); --count) rest.remove_prefix(characterSize(rest));
  return text.substr(0, text.size() - rest.size());
}

std::string_view right(std::string_view text, std::size_t count) {
  std::size_t start = text.size();
  for (; count > 0 && start > 0; --count) {
    do --start;
    while (!isBoundary(text, start));
  }
  return text.substr(start);
}

std::size_t length(std::string_view text) {
  std::size_t count = 0;
  for (; !text.empty(); ++count) text.remove_prefix(characterSize(text));
  return count;
}

std::string_view leftBytes(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  while (!isBoundary(text, most)) --most;
  return text.substr(0, most);
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

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return ascii::lower(x) == ascii::lower(y); });
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

std::int16_t toRoundedInt16(std::string_view text) {
  text = trim(text);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  constexpr std::string_view signsOfNumbers = "0123456789.+-eE";
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool isNumber = text.find_first_not_of(signsOfNumbers) == std::string_view::npos;
  if (!isNumber || error == std::errc::invalid_argument || end != text.data() + text.size())
    throw typeMismatchFailure();
  constexpr double bound = 40000;
  if (error == std::errc::result_out_of_range || std::abs(value) > bound) throw overflowFailure();
  return toInt16(static_cast<std::int64_t>(std::nearbyint(value)));
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
