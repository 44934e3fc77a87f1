#include "platform/mime/html_charset.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/ascii.h"
#include "platform/mime/utf8.h"

namespace velmora::mime {

namespace {

/// Twice what the standard looks at, since mail programs put namespaces and styles in front.
constexpr std::size_t mostBytes = 2048;

constexpr std::string_view blanks = " \t\r\n\f";

void skipBlanks(std::string_view& text) { text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size())); }

struct Attribute {
  std::string_view Name;
  std::string_view Value;
};

std::string_view takeUpTo(std::string_view& text, std::string_view ends) {
  const std::string_view taken = text.substr(0, text.find_first_of(ends));
  text.remove_prefix(taken.size());
  return taken;
}

std::string_view takeValue(std::string_view& tag) {
  const char quote = tag.empty() ? ' ' : tag.front();
  if (quote != '"' && quote != '\'') return takeUpTo(tag, blanks);
  tag.remove_prefix(1);
  const std::string_view value = takeUpTo(tag, std::string_view(&quote, 1));
  tag.remove_prefix(std::min<std::size_t>(1, tag.size()));
  return value;
}

/// Takes an attribute off the front, whose name is blank at the end of the tag.
Attribute takeAttribute(std::string_view& tag) {
  tag.remove_prefix(std::min(tag.find_first_not_of(" \t\r\n\f/=\"'"), tag.size()));
  const std::string_view name = takeUpTo(tag, " \t\r\n\f/=");
  skipBlanks(tag);
  if (!tag.starts_with('=')) return {name, {}};
  tag.remove_prefix(1);
  skipBlanks(tag);
  return {name, takeValue(tag)};
}

/// What "charset=" is followed by in the "content" of a meta element.
std::string_view charsetIn(std::string_view content) {
  constexpr std::string_view name = "charset";
  for (auto at = content.find(name); at != content.npos; at = content.find(name, at + 1)) {
    std::string_view rest = content.substr(at + name.size());
    skipBlanks(rest);
    if (!rest.starts_with('=')) continue;
    rest.remove_prefix(1);
    skipBlanks(rest);
    rest.remove_prefix(std::min(rest.find_first_not_of("\"'"), rest.size()));
    return takeUpTo(rest, "\"'; \t\r\n\f/");
  }
  return {};
}

std::string_view charsetOfMeta(std::string_view tag) {
  std::string_view content;
  bool isType = false;
  for (Attribute attribute = takeAttribute(tag); !attribute.Name.empty(); attribute = takeAttribute(tag)) {
    if (attribute.Name == "charset") return attribute.Value;
    if (attribute.Name == "content") content = attribute.Value;
    isType = isType || (attribute.Name == "http-equiv" && attribute.Value == "content-type");
  }
  return isType ? charsetIn(content) : std::string_view();
}

/// Takes a comment or a tag off the front, with the text behind it that has no tags, and returns what stands in a meta
/// tag.
std::string_view takeTag(std::string_view& html) {
  constexpr std::array<std::string_view, 4> withoutTags = {"title", "style", "script", "textarea"};
  const bool isComment = html.starts_with("<!--");
  const auto end = isComment ? html.find("-->", 2) : html.find('>');
  std::string_view tag = html.substr(0, end).substr(1);
  html.remove_prefix(tag.size() + 1);
  const std::string_view name = takeUpTo(tag, " \t\r\n\f/");
  if (std::ranges::find(withoutTags, name) != withoutTags.end()) {
    const auto close = html.find(std::string("</").append(name));
    if (close != html.npos) html.remove_prefix(close);
  }
  return name == "meta" ? tag : std::string_view();
}

}  // namespace

std::string charsetInHtml(std::string_view bytes) {
  const auto isEightBit = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
  const std::string_view whole = bytes.substr(0, bytes.size() - incompleteEnd(bytes));
  if (std::ranges::any_of(whole, isEightBit) && isUtf8(whole)) return {};
  std::string begin(bytes.substr(0, mostBytes));
  std::ranges::transform(begin, begin.begin(), ascii::lower);
  constexpr std::array<std::string_view, 4> wide = {"utf-16", "utf-32", "ucs-", "unicode"};
  std::string_view html = begin;
  for (auto open = html.find('<'); open != html.npos; open = html.find('<')) {
    html.remove_prefix(open);
    const std::string_view charset = charsetOfMeta(takeTag(html));
    if (charset.empty()) continue;
    const auto begins = [charset](std::string_view name) { return charset.starts_with(name); };
    return std::ranges::any_of(wide, begins) ? "utf-8" : std::string(charset);
  }
  return {};
}

}  // namespace velmora::mime
