#include "platform/mime/base64_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "platform/ascii.h"
#include "platform/mime/charset_names.h"
#include "platform/mime/transfer.h"
#include "platform/mime/utf8.h"

namespace velmora::mime {

namespace {

bool isLetter(char c) { return ascii::isLetter(c) || ascii::isDigit(c) || c == '+' || c == '/'; }

/// Without the marks of a quotation in front, which some programs put there, the blanks around, and the sign with which
/// some servers cut lines that are too long for them.
std::string_view bareLine(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of("> \t"), line.size()));
  return line.substr(0, line.find_last_not_of(" \t!") + 1);
}

/// What stands before the first line that can't be base64, as a footer that a list put behind it.
struct Beginning {
  std::string Letters;  ///< and padding
  bool IsCut = false;   ///< it goes on
};

Beginning beginningOf(std::string_view content) {
  constexpr std::size_t most = 1024;
  constexpr std::size_t longestPadding = 2;
  Beginning beginning{{}, content.size() > most};
  for (std::string_view rest = content.substr(0, most); !rest.empty();) {
    const auto end = std::min(rest.find_first_of("\r\n"), rest.size());
    const std::string_view line = bareLine(rest.substr(0, end));
    const bool isRule = line.size() > longestPadding && line.find_first_not_of('=') == line.npos;
    if (isRule || !std::ranges::all_of(line, [](char c) { return isLetter(c) || c == '='; }))
      return {beginning.Letters};
    beginning.Letters += line;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return beginning;
}

/// Padding fills its group of four; some programs leave it out at the end.
bool hasWholeGroups(std::string_view letters) {
  constexpr std::size_t group = 4;
  while (!letters.empty()) {
    const auto padding = std::min(letters.find('='), letters.size());
    const auto next = std::min(letters.find_first_not_of('=', padding), letters.size());
    const auto last = padding % group;
    if (last == 1 || (next > padding && (last == 0 || last + next - padding < group))) return false;
    letters.remove_prefix(next);
  }
  return true;
}

bool isWide(std::string_view bytes, std::string_view charset) {
  constexpr std::array<std::string_view, 3> names = {"UTF-16", "UTF-32", "UCS-"};
  return bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE") ||
         std::ranges::any_of(names, [charset](std::string_view name) { return charset.starts_with(name); });
}

/// In a long text, a few bytes may be wrong, or all be in another charset.
bool isText(std::string_view bytes, std::string_view charset) {
  constexpr std::size_t isLong = 48;
  constexpr std::size_t betweenControls = 100;
  constexpr std::string_view layout = "\t\r\n\f\x1B";
  if (isWide(bytes, charset)) return true;
  const auto isControl = [layout](char c) {
    return (static_cast<unsigned char>(c) < ' ' || c == '\x7F') && layout.find(c) == layout.npos;
  };
  const auto controls = static_cast<std::size_t>(std::ranges::count_if(bytes, isControl));
  if (controls * betweenControls > bytes.size()) return false;
  return !charset.empty() || bytes.size() >= isLong || isUtf8(bytes.substr(0, bytes.size() - incompleteEnd(bytes)));
}

}  // namespace

bool hasFormOfBase64(std::string_view content) {
  const auto [letters, isCut] = beginningOf(content);
  return !letters.empty() && (isCut || hasWholeGroups(letters));
}

bool isBase64Text(std::string_view content, std::string_view charset) {
  return hasFormOfBase64(content) &&
         isText(decodeTransfer(beginningOf(content).Letters, "base64"), systemCharset(charset));
}

}  // namespace velmora::mime
