#include "platform/mime/bare_address.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "platform/ascii.h"
#include "platform/characters.h"
#include "platform/mime/address_list.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

constexpr std::size_t MaxAddress = 320;

constexpr std::string_view LocalSigns = "!#$%&'*+-/=?^_`{|}~";
constexpr std::string_view DomainSigns = "-_";

struct Range {
  char32_t First;
  char32_t Last;
};

/// They count as letters or marks, and nobody sees them.
constexpr std::array unseen = {
    Range{0x034F, 0x034F}, Range{0x115F, 0x1160},   Range{0x17B4, 0x17B5},
    Range{0x180B, 0x180F}, Range{0x3164, 0x3164},   Range{0xFE00, 0xFE0F},
    Range{0xFFA0, 0xFFA0}, Range{0x16FE4, 0x16FE4}, Range{0xE0100, 0xE01EF},
};

bool isLetterOfAnyScript(char32_t c) {
  const auto holds = [c](const Range& range) { return c >= range.First && c <= range.Last; };
  return (g_unichar_isalnum(c) || g_unichar_ismark(c)) && std::ranges::none_of(unseen, holds);
}

bool isPlain(std::string_view character, std::string_view signs) {
  if (character.size() > 1) return isLetterOfAnyScript(text::decoded(character));
  const char c = character.front();
  return ascii::isLetter(c) || ascii::isDigit(c) || signs.find(c) != signs.npos;
}

/// Words of plain characters with one dot between each two.
bool isDotAtom(std::string_view text, std::string_view signs) {
  if (text.empty() || text.front() == '.' || text.back() == '.' || text.find("..") != text.npos) return false;
  while (!text.empty()) {
    const std::string_view character = text.substr(0, text::characterSize(text));
    if (character != "." && !isPlain(character, signs)) return false;
    text.remove_prefix(character.size());
  }
  return true;
}

bool isBareAddress(std::string_view address) {
  const auto at = address.find('@');
  return at != address.npos && address.size() <= MaxAddress && address.find("=?") == address.npos &&
         isDotAtom(address.substr(0, at), LocalSigns) && isDotAtom(address.substr(at + 1), DomainSigns);
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t";
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

/// What stands where an address should: between the only angle brackets, with nothing behind them, or all there is but
/// the name of a group.
std::string_view addressIn(std::string_view piece) {
  if (const auto colon = piece.find(':'); colon < piece.find_first_of("<@")) piece.remove_prefix(colon + 1);
  const auto open = piece.find('<');
  if (open == piece.npos) return trimmed(piece);
  piece = trimmed(piece.substr(open + 1));
  if (!piece.ends_with('>')) return {};
  piece.remove_suffix(1);
  return trimmed(piece);
}

}  // namespace

std::string lastBareAddress(std::string_view list) {
  const MaskedList masked = maskList(list);
  if (!masked.IsClosed) return {};
  std::string_view last;
  for (const ListPiece& piece : splitList(masked.Text)) {
    const std::string_view text = trimmed(std::string_view(masked.Text).substr(piece.Begin, piece.Size));
    if (!text.empty()) last = text;
  }
  const std::string_view address = addressIn(last);
  return isBareAddress(address) ? std::string(address) : std::string();
}

}  // namespace velmora::mime
