#include <algorithm>
#include <array>
#include <functional>

#include "platform/characters.h"
#include "platform/text.h"

namespace velmora::text {

namespace {

/// How common a byte is in capitals and prose, roughly; 0 is rare. Lead bytes are common in the scripts that need them.
constexpr std::array<unsigned char, 256> frequencies = [] {
  std::array<unsigned char, 256> result{};
  constexpr std::string_view byRank = "QZXJKV'-BPYGFWMUCLDRH.SNIOATE ";
  for (std::size_t rank = 0; rank < byRank.size(); ++rank) {
    result.at(static_cast<unsigned char>(byRank[rank])) = static_cast<unsigned char>(rank + 2);
  }
  for (std::size_t byte = 0x80; byte < 0xC0; ++byte) result.at(byte) = 20;
  for (std::size_t byte = 0xC0; byte < result.size(); ++byte) result.at(byte) = 40;
  return result;
}();

std::size_t rarest(std::string_view what) {
  const auto isRarer = [](char a, char b) {
    return frequencies.at(static_cast<unsigned char>(a)) < frequencies.at(static_cast<unsigned char>(b));
  };
  return static_cast<std::size_t>(std::min_element(what.begin(), what.end(), isRarer) - what.begin());
}

/// All of it is characters of UTF-8.
bool isValid(std::string_view text) {
  while (!text.empty()) {
    const std::size_t size = characterSize(text);
    if (size == 1 && static_cast<unsigned char>(text.front()) >= 0x80) return false;
    text.remove_prefix(size);
  }
  return true;
}

/// The characters of `what` stand here.
bool standsAt(std::string_view text, std::size_t offset, std::string_view what) {
  return text.compare(offset, what.size(), what) == 0 && isBoundary(text, offset) &&
         isBoundary(text, offset + what.size());
}

/// Never takes more than a few steps for a byte, whatever the texts.
std::size_t findSteadily(std::string_view text, std::size_t from, std::string_view what) {
  const std::boyer_moore_searcher searcher(what.begin(), what.end());
  while (true) {
    const auto* const found = std::search(text.begin() + from, text.end(), searcher);
    if (found == text.end()) return std::string_view::npos;
    const auto offset = static_cast<std::size_t>(found - text.begin());
    if (standsAt(text, offset, what)) return offset;
    from = offset + 1;
  }
}

}  // namespace

/// Looks for the one byte of `what` that a text hardly has: the library finds single bytes many at a time. A text that
/// has many of them all the same is searched in another way.
std::size_t find(std::string_view text, std::string_view what) {
  if (text.size() < what.size()) return std::string_view::npos;
  // A part of characters stands in none, and yet may begin in each of them: to compare there would take too long.
  if (!isValid(what) && isValid(text)) return std::string_view::npos;
  const std::size_t anchor = rarest(what);
  const auto places = text.substr(0, text.size() - what.size() + anchor + 1);
  std::size_t patience = 64 + text.size() / 64;
  for (auto at = places.find(what[anchor], anchor); at != std::string_view::npos;
       at = places.find(what[anchor], at + 1)) {
    const std::size_t start = at - anchor;
    if (standsAt(text, start, what)) return start;
    if (patience-- == 0) return findSteadily(text, start + 1, what);
  }
  return std::string_view::npos;
}

}  // namespace velmora::text
