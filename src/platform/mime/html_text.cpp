#include "platform/mime/html_text.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/ascii.h"
#include "platform/mime/html_entities.h"
#include "platform/mime/html_writer.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

constexpr auto nowhere = std::string_view::npos;

/// What of an element's attributes has to do with its text.
constexpr std::array<std::string_view, 7> usedAttributes = {"style",  "href",  "class", "alt",
                                                            "hidden", "start", "value"};

/// Their content is no markup, and no text either.
constexpr std::array<std::string_view, 6> rawElements = {"style", "script", "title", "iframe", "noembed", "noframes"};

bool isWhite(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }
bool endsName(char c) { return isWhite(c) || c == '/' || c == '>'; }

/// In small letters. No name that means anything is longer than this.
std::string nameOf(std::string_view text) {
  constexpr std::size_t longest = 16;
  std::string name(text.substr(0, longest));
  std::transform(name.begin(), name.end(), name.begin(), ascii::lower);
  return name;
}

/// Takes HTML apart into text and tags, as the HTML standard's tokenization does, and tells a writer of them. No byte
/// is looked at more than a few times: what is looked for in vain once isn't looked for again.
class Tokenizer {
 public:
  Tokenizer(Reading& reading, std::string_view html) : reading_(reading), html_(html) {}

  std::string run() {
    while (at_ < html_.size()) {
      const auto begin = at_;
      if (!readMarkup()) readText();
      reading_.worked(workOfByte * (at_ - begin) + workOfToken);
    }
    return writer_.take();
  }

 private:
  static constexpr std::size_t workOfByte = 4;
  static constexpr std::size_t workOfToken = 64;

  char charAt(std::size_t index) const { return index < html_.size() ? html_[index] : '\0'; }

  /// Up to the next "<" behind the one that may stand here.
  void readText() {
    const auto end = std::min(html_.find('<', at_ + 1), html_.size());
    writer_.text(decodeEntities(html_.substr(at_, end - at_), HtmlPlace::Content));
    at_ = end;
  }

  /// False where none begins here.
  bool readMarkup() {
    if (html_[at_] != '<') return false;
    const char next = charAt(at_ + 1);
    if (ascii::isLetter(next)) {
      readStartTag();
    } else if (next == '/' && ascii::isLetter(charAt(at_ + 2))) {
      readEndTag();
    } else if (html_.substr(at_).starts_with("<!--")) {
      readComment();
    } else if (next == '!' || next == '?' || (next == '/' && at_ + 2 < html_.size())) {
      goBehind(html_.find('>', at_), 1);
    } else {
      return false;
    }
    return true;
  }

  void readComment() {
    constexpr std::string_view end = "-->";
    // "<!-->" is a whole one.
    goBehind(html_.find(end, at_ + 2), end.size());
  }

  void readStartTag() {
    at_ += 1;
    const std::string name = readName();
    Attributes attributes;
    readAttributes(&attributes);
    HtmlAttributes views;
    for (const auto& [key, value] : attributes) views.emplace_back(key, value);
    writer_.open(name, views);
    if (std::find(rawElements.begin(), rawElements.end(), name) != rawElements.end()) skipTo(name);
  }

  void readEndTag() {
    at_ += 2;
    const std::string name = readName();
    readAttributes(nullptr);
    writer_.close(name);
  }

  std::string readName() {
    const auto begin = at_;
    while (at_ < html_.size() && !endsName(html_[at_])) ++at_;
    return nameOf(html_.substr(begin, at_ - begin));
  }

  using Attributes = std::vector<std::pair<std::string_view, std::string>>;

  /// Up to the end of the tag. Of two attributes of a name the first counts.
  void readAttributes(Attributes* attributes) {
    for (;;) {
      while (at_ < html_.size() && (isWhite(html_[at_]) || html_[at_] == '/')) ++at_;
      if (at_ >= html_.size()) return;
      if (html_[at_] == '>') {
        ++at_;
        return;
      }
      const auto begin = at_++;  // the first may be an equals sign
      while (at_ < html_.size() && !endsName(html_[at_]) && html_[at_] != '=') ++at_;
      const std::string name = nameOf(html_.substr(begin, at_ - begin));
      const std::string_view value = readValue();
      if (attributes != nullptr) keep(name, value, *attributes);
    }
  }

  static void keep(std::string_view name, std::string_view value, Attributes& attributes) {
    const auto used = std::find(usedAttributes.begin(), usedAttributes.end(), name);
    if (used == usedAttributes.end()) return;
    const bool isThere =
        std::any_of(attributes.begin(), attributes.end(), [&](const auto& a) { return a.first == name; });
    if (!isThere) attributes.emplace_back(*used, decodeEntities(value, HtmlPlace::Attribute));
  }

  /// What stands behind an equals sign, if there is one.
  std::string_view readValue() {
    auto at = at_;
    while (isWhite(charAt(at))) ++at;
    if (charAt(at) != '=') return {};
    do ++at;
    while (isWhite(charAt(at)));
    at_ = at;
    if (const auto end = closingQuote(); end != nowhere) {
      at_ = end + 1;
      return html_.substr(at + 1, end - at - 1);
    }
    while (at_ < html_.size() && !isWhite(html_[at_]) && html_[at_] != '>') ++at_;
    return html_.substr(at, at_ - at);
  }

  /// The partner of the quotation mark that may stand here. One without a partner would swallow the rest of the mail
  /// and is an ordinary character.
  std::size_t closingQuote() {
    const char quote = charAt(at_);
    if (quote != '"' && quote != '\'') return nowhere;
    bool& unpaired = quote == '"' ? doubleUnpaired_ : singleUnpaired_;
    const auto end = unpaired ? nowhere : html_.find(quote, at_ + 1);
    unpaired = end == nowhere;
    return end;
  }

  /// Up to the closing tag of an element; without one there is nothing more to see.
  void skipTo(std::string_view name) {
    for (auto tag = html_.find("</", at_); tag != nowhere; tag = html_.find("</", tag + 2)) {
      reading_.worked(workOfToken);
      if (!text::equalsIgnoringCase(html_.substr(tag + 2, name.size()), name)) continue;
      if (!endsName(charAt(tag + 2 + name.size()))) continue;
      at_ = tag;
      return;
    }
    at_ = html_.size();
  }

  void goBehind(std::size_t end, std::size_t size) { at_ = end == nowhere ? html_.size() : end + size; }

  Reading& reading_;
  HtmlWriter writer_;
  std::string_view html_;
  std::size_t at_ = 0;
  bool doubleUnpaired_ = false;
  bool singleUnpaired_ = false;
};

}  // namespace

std::string htmlToText(Reading& reading, std::string_view html) { return Tokenizer(reading, html).run(); }

}  // namespace velmora::mime
