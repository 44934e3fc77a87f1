#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace velmora::mime {

/// Lays words, blocks, lists, quotes and tables out as plain text in lines that end with LF, with at most one blank
/// line between them and no blanks at their ends. Breaks, blanks and marks are owed until words follow, so that nothing
/// stands around what turns out to be empty.
class TextLayout {
 public:
  /// Running text (valid UTF-8): its white space is one blank.
  void words(std::string_view utf8);

  /// Preformatted text, with its blanks and line ends.
  void preformatted(std::string_view utf8);

  /// Puts something right behind the last word, whatever breaks are owed behind that.
  void append(std::string_view utf8);

  enum class Gap { Line = 1, BlankLine = 2 };

  /// A block begins or ends here.
  void block(Gap gap);

  /// A line is ended by hand: twice makes a blank one.
  void lineBreak();

  /// Puts a prefix of this many columns in front of each line to come, and returns what `outdent` has to take off
  /// again: nothing where lines are far enough to the right already.
  std::size_t indent(std::string_view prefix);
  void outdent(std::size_t size);

  /// Stands in the first line to come in place of the prefix of this size, which was put last.
  void mark(std::string mark, std::size_t size);
  void dropMark() {
    mark_.clear();
    markEnd_ = 0;
  }

  /// A row of a table begins, or the table itself.
  void beginRow();
  void beginCell();
  /// What comes behind a table stands in no row of it.
  void endTable();

  /// Bytes that are written, and those from an offset on.
  std::size_t size() const { return text_.size(); }
  std::string_view from(std::size_t offset) const { return std::string_view(text_).substr(offset); }

  std::string take() { return std::move(text_); }

 private:
  bool isLineEmpty() const { return breaks_ > 0 || text_.empty(); }
  void owe(int breaks);
  void put(std::string_view word);
  void beginLine();

  std::string text_;
  std::string prefix_;
  std::string mark_;
  std::size_t markEnd_ = 0;  ///< where in the prefix it stands
  std::size_t markSize_ = 0;
  std::string blanks_;       ///< owed within the line
  int breaks_ = 0;           ///< owed line ends
  bool afterWhite_ = false;  ///< the blank that white space makes is owed
  bool heldOpen_ = false;    ///< the empty line has blanks that keep it open
  bool rowBegun_ = false;    ///< the row has words
  bool rowBroken_ = false;   ///< ... in more than one line
  bool rowHasTabs_ = false;  ///< ... in more than one cell
  bool belowData_ = false;   ///< ... and the row above had them in more than one cell
  bool cellBegins_ = false;  ///< no words yet: breaks don't count
};

}  // namespace velmora::mime
