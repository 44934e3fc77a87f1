#include "platform/mime/html_charset.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/ascii.h"

namespace velmora::mime {

namespace {

/// Twice what the standard looks at, since mail programs put namespaces and styles in front.
constexpr std::size_t mostBytes = 2048;

constexpr std::string_view blanks = " \t\r\n\f";

void skipBlanks(std::string_view& text) { text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size())); }

/// What "charset=" is followed by, in an attribute of its own or in that of a "content".
std::string_view charsetIn(std::string_view tag) {
  constexpr std::string_view name = "charset";
  for (auto at = tag.find(name); at != tag.npos; at = tag.find(name, at + 1)) {
    std::string_view rest = tag.substr(at + name.size());
    skipBlanks(rest);
    if (!rest.starts_with('=')) continue;
    rest.remove_prefix(1);
    skipBlanks(rest);
    rest.remove_prefix(std::min(rest.find_first_not_of("\"'"), rest.size()));
    return rest.substr(0, rest.find_first_of("\"'; \t\r\n\f/"));
  }
  return {};
}

/// Takes a comment or a tag off the front, and returns what stands in a meta tag.
std::string_view takeTag(std::string_view& html) {
  constexpr std::string_view meta = "<meta";
  const bool isComment = html.starts_with("<!--");
  const auto end = isComment ? html.find("-->", 2) : html.find('>');
  const std::string_view tag = html.substr(0, end);
  html.remove_prefix(tag.size());
  const bool isMeta = tag.starts_with(meta) && tag.size() > meta.size() && !ascii::isLetter(tag[meta.size()]);
  return isMeta ? tag.substr(meta.size()) : std::string_view();
}

}  // namespace

std::string charsetInHtml(std::string_view bytes) {
  std::string begin(bytes.substr(0, mostBytes));
  std::ranges::transform(begin, begin.begin(), ascii::lower);
  constexpr std::array<std::string_view, 4> wide = {"utf-16", "utf-32", "ucs-", "unicode"};
  std::string_view html = begin;
  for (auto open = html.find('<'); open != html.npos; open = html.find('<')) {
    html.remove_prefix(open);
    const std::string_view charset = charsetIn(takeTag(html));
    if (charset.empty()) continue;
    const auto begins = [charset](std::string_view name) { return charset.starts_with(name); };
    return std::ranges::any_of(wide, begins) ? "utf-8" : std::string(charset);
  }
  return {};
}

}  // namespace velmora::mime
