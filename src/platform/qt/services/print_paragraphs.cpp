#include "platform/qt/services/print_paragraphs.h"

#include <algorithm>
#include <utility>

#include "platform/qt/widgets/harmless_text.h"
#include "platform/qt/widgets/text_lines.h"

namespace velmora {

namespace {

constexpr std::size_t MostAtATime = 200'000;

bool isBlank(char letter) { return letter == ' ' || (letter >= '\t' && letter <= '\r'); }

std::string_view withoutEnd(std::string_view line) {
  while (isEnded(line)) line.remove_suffix(1);
  return line;
}

QTextLayout::FormatRange boldRange(qsizetype from, qsizetype to) {
  QTextLayout::FormatRange range;
  range.start = static_cast<int>(from);
  range.length = static_cast<int>(to - from);
  range.format.setFontWeight(QFont::Bold);
  return range;
}

}  // namespace

PrintParagraphs::PrintParagraphs(std::vector<PrintRun> runs) {
  bool bold = false;
  for (PrintRun& run : runs) {
    if (run.bold != bold) changes_.push_back(text_.size());
    bold = run.bold;
    if (text_.empty()) {
      text_ = std::move(run.text);
    } else {
      text_ += std::exchange(run.text, {});
    }
  }
  end_ = text_.size();
}

bool PrintParagraphs::findEnd() {
  const std::size_t until = end_ - std::min(end_, MostAtATime);
  while (end_ > until && isBlank(text_[end_ - 1])) --end_;
  return end_ == 0 || !isBlank(text_[end_ - 1]);
}

PrintParagraph PrintParagraphs::next() {
  begun_ = true;
  const std::string_view line = firstLine(rest());
  PrintParagraph paragraph;
  append(withoutEnd(line), paragraph);
  taken_ += line.size();
  // To the layout a line feed is a letter like any other.
  paragraph.text.replace(u'\n', QChar::LineSeparator);
  return paragraph;
}

void PrintParagraphs::append(std::string_view line, PrintParagraph& paragraph) {
  for (std::size_t at = 0; at < line.size();) {
    while (weight_ < changes_.size() && changes_[weight_] <= taken_ + at) ++weight_;
    const std::size_t change = weight_ < changes_.size() ? changes_[weight_] - taken_ : line.size();
    const std::size_t end = std::min(change, line.size());
    const auto from = paragraph.text.size();
    paragraph.text += harmlessText(line.substr(at, end - at));
    if (weight_ % 2 == 1) paragraph.bold.append(boldRange(from, paragraph.text.size()));
    at = end;
  }
}

std::int32_t PrintParagraphs::percent() const {
  return end_ == 0 ? 100 : static_cast<std::int32_t>(taken_ * 100 / end_);
}

}  // namespace velmora
