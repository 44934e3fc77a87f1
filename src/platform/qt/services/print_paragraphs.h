#pragma once

#include <QList>
#include <QString>
#include <QTextLayout>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/printing.h"

namespace velmora {

/// A paragraph to lay out, harmless as `harmlessText` makes it.
struct PrintParagraph {
  QString text;
  QList<QTextLayout::FormatRange> bold;
};

/// Takes a text to print apart, paragraph by paragraph. What follows the last letter isn't printed, but an empty text
/// has one empty paragraph.
class PrintParagraphs {
 public:
  explicit PrintParagraphs(std::vector<PrintRun> runs);

  /// Looks for the text's last letter, for a fraction of a millisecond at a time, until it is found. To be called
  /// before the other functions until it returns true.
  bool findEnd();

  bool atEnd() const { return begun_ && rest().empty(); }
  PrintParagraph next();

  /// How much of the text has been taken.
  std::int32_t percent() const;

 private:
  std::string_view rest() const { return std::string_view(text_).substr(taken_, end_ - taken_); }
  void append(std::string_view line, PrintParagraph& paragraph);

  std::string text_;
  std::vector<std::size_t> changes_;  ///< where the weight is another one than before; it begins as not bold
  std::size_t weight_ = 0;            ///< how many of them lie behind
  std::size_t taken_ = 0;
  std::size_t end_ = 0;
  bool begun_ = false;
};

}  // namespace velmora
