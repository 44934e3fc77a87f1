#include "platform/qt/html_text.h"

#include <QString>
#include <QTextDocumentFragment>
#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <utility>

namespace velmora {

namespace {

constexpr auto Nowhere = std::string_view::npos;

// Qt's time grows with the square of the depth and of the number of blocks in one document.
constexpr int MaxDepth = 20;
constexpr int MaxTags = 200;

// Behind these, far more than any real mail has, all blocks are just line breaks.
constexpr int MaxPieces = 300;

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
bool isLetter(char c) { return lower(c) >= 'a' && lower(c) <= 'z'; }

template <std::size_t Size>
bool isOneOf(std::string_view name, const std::array<std::string_view, Size>& names) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

/// Holds what lies inside it.
bool isContainer(std::string_view name) {
  return isOneOf(name,
                 std::array<std::string_view, 8>{"blockquote", "center", "div", "dl", "ol", "pre", "table", "ul"});
}

bool isBlock(std::string_view name) {
  return isContainer(name) ||
         isOneOf(name, std::array<std::string_view, 17>{"address", "br", "dd", "dt", "h1", "h2", "h3", "h4", "h5", "h6",
                                                        "hr", "li", "p", "td", "th", "tr", "caption"});
}

/// What Qt doesn't know is a block all the same.
std::string_view knownName(std::string_view name) {
  constexpr std::array<std::string_view, 9> sections = {"article", "aside", "fieldset", "footer", "form",
                                                        "header",  "main",  "nav",      "section"};
  return isOneOf(name, sections) ? "div" : name;
}

bool hidesContent(std::string_view name) {
  return isOneOf(name, std::array<std::string_view, 4>{"head", "script", "style", "title"});
}

/// Cuts HTML down to the tags that give its text a shape, without their attributes and in pieces that Qt reads fast.
class Simplifier {
 public:
  Simplifier(std::string_view html, std::function<void(const std::string&)> piece)
      : html_(html), givePiece_(std::move(piece)) {}

  void run() {
    while (at_ < html_.size()) {
      const auto open = std::min(html_.find('<', at_), html_.size());
      piece_ += html_.substr(at_, open - at_);
      at_ = open;
      if (at_ < html_.size()) readMarkup();
    }
    endPiece();
  }

 private:
  void readMarkup() {
    const std::string_view rest = html_.substr(at_);
    const bool closing = rest.substr(1, 1) == "/";
    const auto nameAt = static_cast<std::size_t>(closing ? 2 : 1);
    if (rest.starts_with("<!--")) {
      goBehind(html_.find("-->", at_ + 2), 3);
    } else if (rest.starts_with("<!") || rest.starts_with("<?")) {
      goBehind(html_.find('>', at_), 1);
    } else if (rest.size() > nameAt && isLetter(rest[nameAt])) {
      readTag(nameAt, closing);
    } else {
      piece_ += "&lt;";
      ++at_;
    }
  }

  void readTag(std::size_t nameAt, bool closing) {
    std::string name;
    for (std::size_t i = at_ + nameAt; i < html_.size() && name.size() < 16; ++i) {
      const bool digit = html_[i] >= '0' && html_[i] <= '9';
      if (!isLetter(html_[i]) && !digit) break;
      name += lower(html_[i]);
    }
    goBehind(tagEnd(), 1);
    if (!closing && hidesContent(name)) skipContent(name);
    if (const std::string_view known = knownName(name); isBlock(known)) closing ? close(known) : open(known);
  }

  /// The '>' of the tag, outside of quotation marks where each has its pair.
  std::size_t tagEnd() {
    for (auto i = html_.find_first_of("\"'>", at_); i != Nowhere; i = html_.find_first_of("\"'>", i + 1)) {
      if (html_[i] == '>') return i;
      bool& unpaired = html_[i] == '"' ? doubleUnpaired_ : singleUnpaired_;
      const auto pair = unpaired ? Nowhere : html_.find(html_[i], i + 1);
      if (pair == Nowhere) {
        unpaired = true;
      } else {
        i = pair;
      }
    }
    return Nowhere;
  }

  /// A head that never ends has lost its closing tag; a script that never ends is no text.
  void skipContent(std::string_view name) {
    const bool head = name == "head";
    if (head && endlessHead_) return;
    for (auto i = html_.find("</", at_); i != Nowhere; i = html_.find("</", i + 2)) {
      const std::string_view found = html_.substr(i + 2, name.size());
      if (!std::equal(found.begin(), found.end(), name.begin(), name.end(),
                      [](char a, char b) { return lower(a) == b; }))
        continue;
      at_ = i;
      return;
    }
    if (head) {
      endlessHead_ = true;
    } else {
      at_ = html_.size();
    }
  }

  void open(std::string_view name) {
    if (++tags_ > MaxTags) endPiece();
    if (isContainer(name) && ++depth_ > MaxDepth) name = "br";
    if (pieces_ > MaxPieces) name = "br";
    piece_.append("<").append(name).append(">");
  }

  void close(std::string_view name) {
    if (isContainer(name)) {
      if (depth_ == 0 || depth_-- > MaxDepth) return;
    }
    piece_.append("</").append(name).append(">");
  }

  void endPiece() {
    givePiece_(piece_);
    piece_.clear();
    ++pieces_;
    tags_ = 0;
    depth_ = 0;
  }

  void goBehind(std::size_t end, std::size_t size) { at_ = end == Nowhere ? html_.size() : end + size; }

  std::string_view html_;
  std::function<void(const std::string&)> givePiece_;
  std::size_t at_ = 0;
  std::string piece_;
  int pieces_ = 0;
  int tags_ = 0;
  int depth_ = 0;
  bool doubleUnpaired_ = false;
  bool singleUnpaired_ = false;
  bool endlessHead_ = false;
};

/// Layout tables leave heaps of blank lines.
QString tidied(const QString& text) {
  QString tidy;
  int breaks = 2;
  for (QString line : text.split('\n')) {
    line.remove(QChar::ObjectReplacementCharacter).replace(QChar::Nbsp, ' ');
    while (line.endsWith(' ')) line.chop(1);
    if (line.isEmpty()) {
      ++breaks;
      continue;
    }
    if (!tidy.isEmpty()) tidy += breaks > 1 ? "\n\n" : "\n";
    tidy += line;
    breaks = 1;
  }
  return tidy;
}

}  // namespace

std::string htmlToText(std::string_view html) {
  QString text;
  const auto add = [&text](const std::string& piece) {
    text += QTextDocumentFragment::fromHtml(QString::fromStdString(piece)).toPlainText() + '\n';
  };
  Simplifier(html, add).run();
  return tidied(text).toStdString();
}

}  // namespace velmora
