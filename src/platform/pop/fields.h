#pragma once

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>

namespace velmora::pop {

/// Takes the next word off the front of a server's line, blank where there is none.
inline std::string_view takeWord(std::string_view& line) {
  constexpr std::string_view blanks = " \t";
  line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
  const std::string_view word = line.substr(0, line.find_first_of(blanks));
  line.remove_prefix(word.size());
  return word;
}

/// A number in decimal digits alone; nothing for any other word and for one beyond 64 bits.
inline std::optional<std::int64_t> toCount(std::string_view word) {
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (error != std::errc() || end != word.data() + word.size() || value < 0) return std::nullopt;
  return value;
}

}  // namespace velmora::pop
