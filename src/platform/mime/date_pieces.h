#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace velmora::mime {

/// A number, of which more than five digits count as 99999, or the number of a month that was named.
struct Element {
  int Value = 0;
  std::size_t Digits = 0;  ///< none where it was named

  bool isMonth() const { return Digits == 0; }
};

/// The text of a date, taken off piece by piece.
class Pieces {
 public:
  explicit Pieces(std::string_view text) : rest_(text) {}

  bool atEnd() const { return rest_.empty(); }
  char front() const { return rest_.front(); }
  bool isDigitNext() const;
  bool isWordNext() const;
  char take();

  /// Takes this sign where a digit stands behind it.
  bool takeBeforeDigit(char sign);

  /// The same, with comments and blanks around it where it is a ":".
  bool takeBetween(char sign);

  /// Blanks, or also other signs without a meaning. Returns whether there were any.
  bool skipBlanks(std::string_view blanks = " \t");

  /// What stands in the brackets of the comment that begins here, with comments inside it.
  std::string_view takeComment();

  /// A time, of which the hour and ":" stand next.
  bool isTimeNext() const;

  Element takeNumber();

  /// A half of the day, "a" or "p", in any way to write it ("PM", "p. m."); a blank where there is none.
  char takeHalf();

  /// Letters, and the dots between them.
  std::string_view takeWord();

  /// A number, or the English name of a month.
  std::optional<Element> takeElement();

 private:
  void skipBlanksAndComments();
  std::size_t lettersNext() const;

  std::string_view rest_;
};

}  // namespace velmora::mime
