#include "platform/mime/html_writer.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/ascii.h"
#include "platform/text.h"

namespace velmora::mime {

/// What an element does to the text.
enum class HtmlWriter::Role {
  Inline,
  Block,      ///< stands in lines of its own
  Paragraph,  ///< ... with a blank line around it
  Hidden,     ///< no text
  Break,
  Rule,
  Preformatted,
  List,
  NumberedList,
  Item,
  Quote,
  Term,
  Detail,  ///< stands further to the right than its term
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
    if (c > ' ') style += ascii::lower(c);
  }
  return style;
}

/// The value of a property of a style, blank where it has none.
std::string_view propertyOf(std::string_view style, std::string_view property) {
  for (auto at = style.find(property); at != style.npos; at = style.find(property, at + 1)) {
    const std::string_view value = style.substr(at + property.size());
    if ((at == 0 || style[at - 1] == ';') && value.starts_with(':')) return value.substr(1, value.find(';') - 1);
  }
  return {};
}

/// All of it is nothing: "0", "0px 0", but neither "0.9" nor "0 0 16px".
bool isNought(std::string_view value) {
  return value.starts_with('0') && value.find_first_of("123456789") == value.npos;
}

bool isHidden(const HtmlAttributes& attributes) {
  if (has(attributes, "hidden")) return true;
  const std::string style = plainStyle(attributes);
  if (propertyOf(style, "display").starts_with("none") || propertyOf(style, "visibility").starts_with("hidden"))
    return true;
  // Newsletters hide a first line in these ways at once. One alone may be taken back for what is inside.
  const bool isFlat = isNought(propertyOf(style, "max-height"));
  const bool isCut = propertyOf(style, "overflow").starts_with("hidden");
  const bool isClear = isNought(propertyOf(style, "opacity"));
  const bool isTiny = isNought(propertyOf(style, "font-size"));
  return (isFlat && isCut) || isFlat + isClear + isTiny > 1;
}

/// Some mail programs write each line as a paragraph without margins.
bool hasMargins(const HtmlAttributes& attributes) {
  const std::string style = plainStyle(attributes);
  return !valueOf(attributes, "class").starts_with("Mso") && !isNought(propertyOf(style, "margin")) &&
         !(isNought(propertyOf(style, "margin-top")) && isNought(propertyOf(style, "margin-bottom")));
}

/// Its blanks and line ends are to be seen.
bool keepsBlanks(const HtmlAttributes& attributes) {
  return propertyOf(plainStyle(attributes), "white-space").starts_with("pre");
}

/// Words stand apart from those around them, a smile or a letter does not.
std::string pictureText(std::string_view alt) {
  constexpr std::size_t shortest = 3;
  return text::length(alt.substr(0, 4 * shortest)) < shortest ? std::string(alt) : " " + std::string(alt) + " ";
}

bool isVoidElement(std::string_view name) {
  constexpr std::array<std::string_view, 14> voids = {"br",   "img",  "hr",  "meta",   "link",  "input", "col",
                                                      "area", "base", "wbr", "source", "embed", "param", "track"};
  return std::find(voids.begin(), voids.end(), name) != voids.end();
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
  if (address.find('@') != address.npos) address = address.substr(0, address.find('?'));
  if (address.ends_with('/')) address.remove_suffix(1);
  return address;
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view white = " \t\n";
  const auto first = text.find_first_not_of(white);
  return first == text.npos ? std::string_view{} : text.substr(first, text.find_last_not_of(white) - first + 1);
}

}  // namespace

const HtmlWriter::Kind& HtmlWriter::kindOf(std::string_view name) {
  static constexpr std::array kinds = {
      Kind{"td", Role::Cell},          Kind{"tr", Role::Row},
      Kind{"table", Role::Table},      Kind{"div", Role::Block},
      Kind{"p", Role::Paragraph},      Kind{"br", Role::Break},
      Kind{"a", Role::Link},           Kind{"img", Role::Picture},
      Kind{"th", Role::Cell},          Kind{"li", Role::Item},
      Kind{"ul", Role::List},          Kind{"ol", Role::NumberedList},
      Kind{"template", Role::Hidden},  Kind{"datalist", Role::Hidden},
      Kind{"h1", Role::Paragraph},     Kind{"h2", Role::Paragraph},
      Kind{"h3", Role::Paragraph},     Kind{"h4", Role::Paragraph},
      Kind{"h5", Role::Paragraph},     Kind{"h6", Role::Paragraph},
      Kind{"pre", Role::Preformatted}, Kind{"textarea", Role::Preformatted},
      Kind{"blockquote", Role::Quote}, Kind{"hr", Role::Rule},
      Kind{"menu", Role::List},        Kind{"dir", Role::List},
      Kind{"dl", Role::Paragraph},     Kind{"dt", Role::Term},
      Kind{"dd", Role::Detail},        Kind{"address", Role::Block},
      Kind{"article", Role::Block},    Kind{"aside", Role::Block},
      Kind{"caption", Role::Block},    Kind{"center", Role::Block},
      Kind{"details", Role::Block},    Kind{"fieldset", Role::Block},
      Kind{"figcaption", Role::Block}, Kind{"figure", Role::Paragraph},
      Kind{"footer", Role::Block},     Kind{"form", Role::Block},
      Kind{"header", Role::Block},     Kind{"legend", Role::Block},
      Kind{"main", Role::Block},       Kind{"nav", Role::Block},
      Kind{"option", Role::Block},     Kind{"section", Role::Block},
      Kind{"summary", Role::Block},
  };
  static constexpr Kind anyOther{"", Role::Inline};
  const auto found = std::find_if(kinds.begin(), kinds.end(), [&](const Kind& kind) { return kind.name == name; });
  return found == kinds.end() ? anyOther : *found;
}

void HtmlWriter::open(std::string_view name, const HtmlAttributes& attributes) {
  // No mail is nested as deeply as that, and each tag may look through all that is open.
  constexpr std::size_t mostOpen = 256;
  const Role role = kindOf(name).role;
  closeWhatEnds(role, name);
  Element element{.name = std::string(name), .role = role};
  element.hides = role == Role::Hidden || isHidden(attributes);
  const bool isVoid = isVoidElement(name);
  element.preformatted = !isVoid && (role == Role::Preformatted || keepsBlanks(attributes));
  if (!isVoid && open_.size() == mostOpen) {
    // As many names as there may be elements: a stranger has no end of names.
    if (tooDeep_.size() < mostOpen || tooDeep_.contains(element.name)) ++tooDeep_[element.name];
    return;
  }
  const bool isSeen = hiding_ == 0 && !element.hides;
  if (isSeen) begin(element, attributes);
  if (isVoid) {
    if (isSeen) end(element);
    return;
  }
  // Inside of what is hidden all are kept, so that its own end is told from theirs.
  if (role == Role::Inline && isSeen && !element.preformatted) return;
  if (element.hides) ++hiding_;
  open_.push_back(std::move(element));
}

/// What may not stand inside of the new element ends where that begins.
void HtmlWriter::closeWhatEnds(Role role, std::string_view name) {
  const auto isList = [](const Element& e) { return e.role == Role::List || e.role == Role::NumberedList; };
  const auto isTable = [](const Element& e) { return e.role == Role::Table; };
  const auto isCell = [](const Element& e) { return e.role == Role::Cell || e.role == Role::Table; };
  switch (role) {
    case Role::Inline:
    case Role::Hidden:
    case Role::Break:
    case Role::Picture:
      return;
    case Role::Row:
      closeUpTo([](const Element& e) { return e.role == Role::Row; }, isTable);
      return;
    case Role::Cell:
      closeUpTo([](const Element& e) { return e.role == Role::Cell; }, isTable);
      return;
    case Role::Link:
      closeUpTo([](const Element& e) { return e.role == Role::Link; }, isCell);
      return;
    case Role::Item:
      closeUpTo([](const Element& e) { return e.role == Role::Item; },
                [&](const Element& e) { return isList(e) || isCell(e); });
      break;
    case Role::Term:
    case Role::Detail:
      closeUpTo([](const Element& e) { return e.role == Role::Term || e.role == Role::Detail; },
                [&](const Element& e) { return e.name == "dl" || isCell(e); });
      break;
    default:
      if (name == "option") closeUpTo([](const Element& e) { return e.name == "option"; }, isCell);
  }
  closeUpTo([](const Element& e) { return e.name == "p"; }, isCell);
}

/// Closes the last element that is wanted, and those inside it, unless one that bounds the search stands in between.
template <class Wanted, class Bound>
bool HtmlWriter::closeUpTo(Wanted wanted, Bound bound) {
  for (std::size_t i = open_.size(); i > 0; --i) {
    if (wanted(open_[i - 1])) {
      while (open_.size() >= i) closeLast();
      return true;
    }
    if (bound(open_[i - 1])) return false;
  }
  return false;
}

void HtmlWriter::close(std::string_view name) {
  if (const auto ignored = tooDeep_.find(std::string(name)); ignored != tooDeep_.end()) {
    if (--ignored->second == 0) tooDeep_.erase(ignored);
    return;
  }
  const Role role = kindOf(name).role;
  const bool ofTable = role == Role::Cell || role == Role::Row || role == Role::Table;
  const auto bounds = [&](const Element& e) { return e.role == Role::Table || (!ofTable && e.role == Role::Cell); };
  const bool isClosed = closeUpTo([&](const Element& e) { return e.name == name; }, bounds);
  if (!isClosed && hiding_ == 0 && (name == "p" || name == "br")) layout_.lineBreak();
}

void HtmlWriter::closeLast() {
  const Element element = std::move(open_.back());
  open_.pop_back();
  if (hiding_ == 0) end(element);
  if (element.hides) --hiding_;
}

void HtmlWriter::text(std::string_view utf8) {
  if (hiding_ > 0) return;
  preformatted_ > 0 ? layout_.preformatted(utf8) : layout_.words(utf8);
}

std::string HtmlWriter::take() {
  while (!open_.empty()) closeLast();
  return layout_.take();
}

void HtmlWriter::begin(Element& element, const HtmlAttributes& attributes) {
  constexpr std::string_view listIndent = "  ";
  if (element.preformatted) ++preformatted_;
  switch (element.role) {
    case Role::Block:
    case Role::Term:
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
    case Role::Row:
      return layout_.beginRow();
    case Role::Cell:
      return layout_.beginCell();
    case Role::Link:
      element.address = addressOf(valueOf(attributes, "href"));
      element.begin = layout_.size();
      return;
    case Role::Picture:
      return layout_.words(pictureText(valueOf(attributes, "alt")));
    default:
      return;
  }
}

void HtmlWriter::end(const Element& element) {
  layout_.outdent(element.indent);
  if (element.preformatted) --preformatted_;
  switch (element.role) {
    case Role::Block:
    case Role::Row:
    case Role::Term:
    case Role::Detail:
    case Role::Rule:
      return layout_.block(TextLayout::Gap::Line);
    case Role::Paragraph:
    case Role::Preformatted:
    case Role::Quote:
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
