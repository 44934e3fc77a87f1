#include "platform/qt/widgets/harmless_text.h"

#include <QTextBoundaryFinder>
#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/qt/strings.h"
#include "platform/text.h"

namespace velmora {

namespace {

/// No letter of a living script has more; thousands of them stall the layout and paint over the lines around.
constexpr int MostMarks = 8;

constexpr char32_t Dropped = 0;
constexpr char32_t Replaced = QChar::ReplacementCharacter;

struct Range {
  char32_t First;
  char32_t Last;
  char32_t Shown;
};

// In order. What real mail has and what is no loss is dropped, what only deceives or confuses Qt is seen.
constexpr std::array ranges = {
    Range{0x80, 0x84, Replaced},       // these have no pictures
    Range{0x85, 0x85, U'\n'},          // next line
    Range{0x86, 0x9F, Replaced},       // as above
    Range{0x2028, 0x2029, U'\n'},      // the separators of lines and paragraphs
    Range{0x202A, 0x202C, Dropped},    // embeddings: common, and text from right to left is laid out well without
    Range{0x202D, 0x202E, Replaced},   // overrides: nobody needs them but to disguise a name
    Range{0x2066, 0x206F, Dropped},    // isolates, as the embeddings; old format controls that nothing heeds
    Range{0xFDD0, 0xFDEF, Replaced},   // no characters; to Qt two of them are the bounds of a frame
    Range{0xFEFF, 0xFEFF, Dropped},    // byte order marks, which joined files have in their middle
    Range{0xFFF9, 0xFFFC, Replaced},   // annotations hide text; to Qt the last is an object
    Range{0xE0000, 0xE00FF, Dropped},  // tags smuggle a text that only programs see
    Range{0xE01F0, 0xE0FFF, Dropped},  // the same, unassigned
};

bool isPlain(char16_t unit) { return unit >= 0x20 && unit < 0x7F; }

char32_t shownControl(char32_t control) {
  if (control == U'\t') return control;
  return control >= U'\n' && control <= U'\r' ? U'\n' : 0x2400 + control;
}

char32_t shown(char32_t character) {
  if (character < 0x20) return shownControl(character);
  if (character == 0x7F) return 0x2421;
  if ((character & 0xFFFE) == 0xFFFE) return Replaced;  // the last two of each plane are no characters
  const auto* range =
      std::find_if(ranges.begin(), ranges.end(), [character](const Range& r) { return character <= r.Last; });
  return range != ranges.end() && character >= range->First ? range->Shown : character;
}

/// Joins the letter in front of it. What is invisible counts too, or it would part the marks that pile up.
bool isMark(char32_t character) {
  return character >= 0xAD && (QChar::isMark(character) || QChar::category(character) == QChar::Other_Format);
}

/// Makes text harmless in its own place, as nothing grows.
class Filter {
 public:
  explicit Filter(QString& text) : text_(text), from_(text.data()), end_(from_ + text.size()), to_(from_) {}

  void run() {
    while (from_ != end_) {
      if (isPlain(from_->unicode())) {
        copyPlain();
      } else {
        put(shown(next()));
      }
    }
    text_.truncate(to_ - text_.constData());
  }

 private:
  void copyPlain() {
    do {
      *to_++ = *from_++;
    } while (from_ != end_ && isPlain(from_->unicode()));
    marks_ = 0;
  }

  char32_t next() {
    const QChar unit = *from_++;
    if (unit.isHighSurrogate() && from_ != end_) return QChar::surrogateToUcs4(unit, *from_++);
    if (unit == u'\r' && from_ != end_ && *from_ == u'\n') ++from_;
    return unit.unicode();
  }

  void put(char32_t character) {
    if (character == Dropped) return;
    marks_ = isMark(character) ? marks_ + 1 : 0;
    if (marks_ > MostMarks) return;
    for (const char16_t unit : QChar::fromUcs4(character)) *to_++ = unit;
  }

  QString& text_;
  QChar* from_;
  QChar* end_;
  QChar* to_;
  int marks_ = 0;
};

/// The beginning that fits `most` and ends between two characters as a reader counts them.
QString cut(const QString& text, qsizetype most) {
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
  finder.setPosition(most);
  return text.left(finder.isAtBoundary() ? most : finder.toPreviousBoundary());
}

}  // namespace

QString harmlessText(std::string_view utf8) {
  QString text = qt(utf8);
  Filter(text).run();
  return text;
}

QString harmlessLine(std::string_view utf8, qsizetype most) {
  if (most <= 0) return {};
  const std::string_view beginning = text::left(utf8, 2 * static_cast<std::size_t>(most));
  QString line = harmlessText(beginning);
  line.replace(u'\n', u' ').replace(u'\t', u' ');
  if (line.size() <= most && beginning.size() == utf8.size()) return line;
  return cut(line, std::min(line.size(), most - 1)) + u'…';
}

QString breakable(const QString& text, qsizetype widest) {
  QString result;
  qsizetype word = 0;
  for (const QChar letter : text) {
    word = letter.isSpace() ? 0 : word + 1;
    // Never between the halves of a surrogate pair.
    if (word > widest && !letter.isLowSurrogate()) {
      result += QChar(0x200B);
      word = 1;
    }
    result += letter;
  }
  return result;
}

}  // namespace velmora
