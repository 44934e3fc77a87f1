#include "platform/mime/content_type.h"

#include <algorithm>
#include <cstddef>

#include "platform/mime/transfer.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

constexpr std::string_view blanks = " \t";

/// Reads a value from front to back.
class Scanner {
 public:
  explicit Scanner(std::string_view value) : rest_(value) {}

  bool atEnd() const { return rest_.empty(); }
  bool take(char c) {
    const bool isThere = rest_.starts_with(c);
    if (isThere) rest_.remove_prefix(1);
    return isThere;
  }

  /// Blanks, comments and any of `others`.
  void skip(std::string_view others) {
    while (!rest_.empty()) {
      if (rest_.front() == '(') {
        skipComment();
      } else if (blanks.find(rest_.front()) != blanks.npos || others.find(rest_.front()) != others.npos) {
        rest_.remove_prefix(1);
      } else {
        return;
      }
    }
  }

  /// Up to a blank or any of `ends`.
  std::string_view word(std::string_view ends) {
    const auto isEnd = [&](char c) { return blanks.find(c) != blanks.npos || ends.find(c) != ends.npos; };
    const auto end = std::find_if(rest_.begin(), rest_.end(), isEnd);
    const std::string_view taken = rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
    rest_.remove_prefix(taken.size());
    return taken;
  }

  /// What stands behind an opening quotation mark, up to the closing one.
  std::string quoted() {
    std::string text;
    while (!rest_.empty() && !take('"')) {
      if (take('\\') && rest_.empty()) break;
      text += rest_.front();
      rest_.remove_prefix(1);
    }
    return text;
  }

 private:
  void skipComment() {
    std::size_t depth = 0;
    do {
      if (rest_.front() == '(') ++depth;
      if (rest_.front() == ')') --depth;
      rest_.remove_prefix(rest_.front() == '\\' ? std::min<std::size_t>(2, rest_.size()) : 1);
    } while (depth > 0 && !rest_.empty());
  }

  std::string_view rest_;
};

/// The value of a parameter that names a charset and a language before it (RFC 2231 section 4).
std::string extended(std::string_view value, bool begins) {
  const auto second = begins ? value.find('\'', value.find('\'') + 1) : value.npos;
  return decodePercent(second == value.npos ? value : value.substr(second + 1));
}

/// A parameter may come in several sections (RFC 2231 section 3); of two of a name the first counts.
void keep(std::string_view name, std::string_view value, std::string& text) {
  const auto star = name.find('*');
  const bool isSection = star != name.npos && star + 1 < name.size();
  if (!text.empty() && !isSection) return;
  const bool isFirst = text.empty();
  text += name.ends_with('*') ? extended(value, isFirst) : std::string(value);
}

}  // namespace

bool ContentType::is(std::string_view type) const { return text::equalsIgnoringCase(Type, type); }

bool ContentType::is(std::string_view type, std::string_view subtype) const {
  return is(type) && text::equalsIgnoringCase(Subtype, subtype);
}

ContentType parseContentType(std::string_view value, const ContentType& fallback) {
  Scanner scanner(value);
  ContentType type;
  scanner.skip("");
  type.Type = scanner.word("/;,(");
  scanner.skip("");
  if (scanner.take('/')) {
    scanner.skip("");
    type.Subtype = scanner.word(";,(");
  } else {
    // Old programs write just "text".
    type.Type = fallback.Type;
    type.Subtype = fallback.Subtype;
  }
  for (scanner.skip(";,"); !scanner.atEnd(); scanner.skip(";,")) {
    const std::string_view name = scanner.word("=;");
    scanner.skip("");
    if (!scanner.take('=')) continue;
    scanner.skip("");
    const std::string_view base = name.substr(0, name.find('*'));
    const bool isCharset = text::equalsIgnoringCase(base, "charset");
    // A boundary may hold a comma.
    const std::string text = scanner.take('"') ? scanner.quoted() : std::string(scanner.word(isCharset ? ";," : ";"));
    if (isCharset) keep(name, text, type.Charset);
    if (text::equalsIgnoringCase(base, "boundary")) keep(name, text, type.Boundary);
  }
  return type;
}

}  // namespace velmora::mime
