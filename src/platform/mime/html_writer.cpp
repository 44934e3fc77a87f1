#include "platform/mime/html_writer.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/text.h"

namespace velmora::mime {

/// What an element does to the text.
enum class HtmlWriter::Role {
  Inline,
  Block,      ///< stands in lines of its own
  Paragraph,  ///< ... with a blank line around it
  Script,     ///< no text, and its content no markup
  Hidden,     ///< no text
  Break,
  Rule,
  Preformatted,
  List,
  NumberedList,
  Item,
  Quote,
  Detail,  ///< stands further to the right
  Table,
  Row,
  Cell,
  Link,
  Picture,
};

struct HtmlWriter::Kind {
  std::string_view name;
  Role role;
};

namespace {

std::string_view valueOf(const HtmlAttributes& attributes, std::string_view name) {
  const auto found = std::find_if(attributes.begin(), attributes.end(), [&](const auto& a) { return a.first == name; });
  return found == attributes.end() ? std::string_view{} : found->second;
}

bool has(const HtmlAttributes& attributes, std::string_view name) {
  return std::any_of(attributes.begin(), attributes.end(), [&](const auto& a) { return a.first == name; });
}

/// A style without its blanks, in small letters. Longer ones than real ones aren't looked through.
std::string plainStyle(const HtmlAttributes& attributes) {
  constexpr std::size_t longest = 4096;
  std::string style;
  for (const char c : valueOf(attributes, "style").substr(0, longest)) {
    if (c > ' ') style += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return style;
}

bool isHidden(const HtmlAttributes& attributes) {
  if (has(attributes, "hidden")) return true;
  const std::string style = plainStyle(attributes);
  constexpr std::array<std::string_view, 3> hiding = {"display:none", "visibility:hidden", "mso-hide:all"};
  return std::any_of(hiding.begin(), hiding.end(), [&](auto words) { return style.find(words) != style.npos; });
}

/// Some mail programs write each line as a paragraph without margins.
bool hasMargins(const HtmlAttributes& attributes) {
  const std::string style = plainStyle(attributes);
  return !valueOf(attributes, "class").starts_with("Mso") && style.find("margin:0") == style.npos &&
         style.find("margin-top:0") == style.npos && style.find("margin-bottom:0") == style.npos;
}

int numberIn(std::string_view text, int fallback) {
  constexpr int most = 1'000'000;
  int number = fallback;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && number >= -most && number <= most ? number : fallback;
}

/// Without the blanks and control characters that some wrap it in.
std::string addressOf(std::string_view href) {
  std::string address(href);
  std::erase_if(address, [](char c) { return (c >= 0 && c <= ' ') || c == 0x7F; });
  return address;
}

bool startsIgnoringCase(std::string_view text, std::string_view start) {
  return text::equalsIgnoringCase(text.substr(0, start.size()), start);
}

constexpr std::array<std::string_view, 5> schemes = {"https://", "http://", "mailto:", "ftp://", "tel:"};

/// Scripts and places within the message lead nowhere that a reader could go.
bool leadsSomewhere(std::string_view address) {
  return std::any_of(schemes.begin(), schemes.end(), [&](auto scheme) { return startsIgnoringCase(address, scheme); });
}

/// What people call it.
std::string_view core(std::string_view address) {
  for (const auto scheme : schemes) {
    if (startsIgnoringCase(address, scheme)) address.remove_prefix(scheme.size());
  }
  if (address.ends_with('/')) address.remove_suffix(1);
  return address;
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view white = " \t\n";
  const auto first = text.find_first_not_of(white);
  return first == text.npos ? std::string_view{} : text.substr(first, text.find_last_not_of(white) - first + 1);
}

}  // namespace

HtmlWriter::Role HtmlWriter::roleOf(std::string_view name) {
  static constexpr std::array kinds = {
      Kind{"td", Role::Cell},          Kind{"tr", Role::Row},
      Kind{"table", Role::Table},      Kind{"div", Role::Block},
      Kind{"p", Role::Paragraph},      Kind{"br", Role::Break},
      Kind{"a", Role::Link},           Kind{"img", Role::Picture},
      Kind{"th", Role::Cell},          Kind{"li", Role::Item},
      Kind{"ul", Role::List},          Kind{"ol", Role::NumberedList},
      Kind{"script", Role::Script},    Kind{"style", Role::Script},
      Kind{"title", Role::Hidden},     Kind{"template", Role::Hidden},
      Kind{"datalist", Role::Hidden},  Kind{"area", Role::Hidden},
      Kind{"h1", Role::Paragraph},     Kind{"h2", Role::Paragraph},
      Kind{"h3", Role::Paragraph},     Kind{"h4", Role::Paragraph},
      Kind{"h5", Role::Paragraph},     Kind{"h6", Role::Paragraph},
      Kind{"pre", Role::Preformatted}, Kind{"textarea", Role::Preformatted},
      Kind{"blockquote", Role::Quote}, Kind{"hr", Role::Rule},
      Kind{"menu", Role::List},        Kind{"dir", Role::List},
      Kind{"dl", Role::Paragraph},     Kind{"dt", Role::Block},
      Kind{"dd", Role::Detail},        Kind{"address", Role::Block},
      Kind{"article", Role::Block},    Kind{"aside", Role::Block},
      Kind{"body", Role::Block},       Kind{"caption", Role::Block},
      Kind{"center", Role::Block},     Kind{"details", Role::Block},
      Kind{"fieldset", Role::Block},   Kind{"figcaption", Role::Block},
      Kind{"figure", Role::Paragraph}, Kind{"footer", Role::Block},
      Kind{"form", Role::Block},       Kind{"header", Role::Block},
      Kind{"legend", Role::Block},     Kind{"main", Role::Block},
      Kind{"nav", Role::Block},        Kind{"option", Role::Block},
      Kind{"section", Role::Block},    Kind{"summary", Role::Block},
  };
  const auto found = std::find_if(kinds.begin(), kinds.end(), [&](const Kind& kind) { return kind.name == name; });
  return found == kinds.end() ? Role::Inline : found->role;
}

void HtmlWriter::open(std::string_view name, const HtmlAttributes& attributes) {
  Element element{.role = roleOf(name)};
  element.hides = element.role == Role::Script || element.role == Role::Hidden || isHidden(attributes);
  if (element.hides) ++hiding_;
  if (hiding_ == 0) begin(element, attributes);
  open_.push_back(std::move(element));
}

void HtmlWriter::close() {
  if (open_.empty()) return;
  const Element element = std::move(open_.back());
  open_.pop_back();
  if (hiding_ == 0) end(element);
  if (element.hides) --hiding_;
}

void HtmlWriter::text(std::string_view utf8) {
  if (hiding_ > 0) return;
  preformatted_ > 0 ? layout_.preformatted(utf8) : layout_.words(utf8);
}

bool HtmlWriter::isInScript() const { return !open_.empty() && open_.back().role == Role::Script; }

void HtmlWriter::begin(Element& element, const HtmlAttributes& attributes) {
  constexpr std::string_view listIndent = "  ";
  switch (element.role) {
    case Role::Block:
      return layout_.block(TextLayout::Gap::Line);
    case Role::Paragraph:
      if (!hasMargins(attributes)) element.role = Role::Block;
      return layout_.block(hasMargins(attributes) ? TextLayout::Gap::BlankLine : TextLayout::Gap::Line);
    case Role::Break:
      return layout_.lineBreak();
    case Role::Rule:
      layout_.block(TextLayout::Gap::Line);
      return layout_.words("----------");
    case Role::Preformatted:
      ++preformatted_;
      return layout_.block(TextLayout::Gap::BlankLine);
    case Role::List:
    case Role::NumberedList:
      layout_.block(lists_.empty() ? TextLayout::Gap::BlankLine : TextLayout::Gap::Line);
      return lists_.push_back({element.role == Role::NumberedList, numberIn(valueOf(attributes, "start"), 1)});
    case Role::Item:
      return beginItem(element, attributes);
    case Role::Quote:
      layout_.block(TextLayout::Gap::BlankLine);
      element.indent = layout_.indent("> ");
      return;
    case Role::Detail:
      layout_.block(TextLayout::Gap::Line);
      element.indent = layout_.indent(listIndent);
      return;
    case Role::Table:
      return layout_.block(TextLayout::Gap::Line);
    case Role::Row:
      return layout_.beginRow();
    case Role::Cell:
      return layout_.beginCell();
    case Role::Link:
      element.address = addressOf(valueOf(attributes, "href"));
      element.begin = layout_.size();
      return;
    case Role::Picture:
      return layout_.words(valueOf(attributes, "alt"));
    default:
      return;
  }
}

void HtmlWriter::end(const Element& element) {
  layout_.outdent(element.indent);
  switch (element.role) {
    case Role::Block:
    case Role::Detail:
    case Role::Rule:
      return layout_.block(TextLayout::Gap::Line);
    case Role::Paragraph:
    case Role::Quote:
      return layout_.block(TextLayout::Gap::BlankLine);
    case Role::Preformatted:
      --preformatted_;
      return layout_.block(TextLayout::Gap::BlankLine);
    case Role::List:
    case Role::NumberedList:
      lists_.pop_back();
      return layout_.block(lists_.empty() ? TextLayout::Gap::BlankLine : TextLayout::Gap::Line);
    case Role::Item:
      layout_.dropMark();
      return layout_.block(TextLayout::Gap::Line);
    case Role::Table:
      return layout_.endTable();
    case Role::Row:
      return layout_.beginRow();
    case Role::Link:
      return endLink(element);
    default:
      return;
  }
}

void HtmlWriter::beginItem(Element& element, const HtmlAttributes& attributes) {
  layout_.block(TextLayout::Gap::Line);
  if (lists_.empty() || !lists_.back().numbered) {
    element.indent = layout_.indent("  ");
    return layout_.mark("• ", element.indent);
  }
  List& list = lists_.back();
  const int number = numberIn(valueOf(attributes, "value"), list.next);
  list.next = number + 1;
  std::string mark = std::to_string(number) + ". ";
  element.indent = layout_.indent(std::string(mark.size(), ' '));
  layout_.mark(std::move(mark), element.indent);
}

void HtmlWriter::endLink(const Element& link) {
  constexpr std::size_t longest = 2000;
  if (!leadsSomewhere(link.address)) return;
  const std::string_view words = trimmed(layout_.from(std::min(link.begin, layout_.size())));
  if (text::equalsIgnoringCase(core(words), core(link.address))) return;
  std::string shown(text::leftBytes(link.address, longest));
  if (shown.size() < link.address.size()) shown += "…";
  const std::string address = "<" + shown + ">";
  words.empty() ? layout_.words(address) : layout_.append(" " + address);
}

}  // namespace velmora::mime
