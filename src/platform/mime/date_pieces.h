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

  void skipBlanks();
  Element takeNumber();

  /// Letters, and the dots between them.
  std::string_view takeWord();

  /// A number, or the English name of a month.
  std::optional<Element> takeElement();

 private:
  std::size_t lettersNext() const;

  std::string_view rest_;
};

}  // namespace velmora::mime
