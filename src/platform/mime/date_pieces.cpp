#include "platform/mime/date_pieces.h"

#include <algorithm>

#include "platform/ascii.h"
#include "platform/mime/date_names.h"

namespace velmora::mime {

namespace {

bool isPartOfWord(char c) { return ascii::isLetter(c) || static_cast<unsigned char>(c) >= 0x80; }

}  // namespace

bool Pieces::isDigitNext() const { return !rest_.empty() && ascii::isDigit(rest_.front()); }

bool Pieces::isWordNext() const { return !rest_.empty() && isPartOfWord(rest_.front()); }

char Pieces::take() {
  const char c = rest_.front();
  rest_.remove_prefix(1);
  return c;
}

bool Pieces::takeBeforeDigit(char sign) {
  const bool isThere = rest_.size() > 1 && rest_[0] == sign && ascii::isDigit(rest_[1]);
  if (isThere) take();
  return isThere;
}

void Pieces::skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size())); }

Element Pieces::takeNumber() {
  constexpr int most = 99'999;
  Element number;
  for (; isDigitNext(); ++number.Digits) number.Value = std::min(number.Value * 10 + (take() - '0'), most);
  return number;
}

std::string_view Pieces::takeWord() {
  const std::string_view all = rest_;
  rest_.remove_prefix(lettersNext());
  while (rest_.size() > 1 && rest_[0] == '.' && isPartOfWord(rest_[1])) {
    take();
    rest_.remove_prefix(lettersNext());
  }
  return all.substr(0, all.size() - rest_.size());
}

std::optional<Element> Pieces::takeElement() {
  if (isDigitNext()) return takeNumber();
  const std::string_view word = rest_.substr(0, lettersNext());
  const auto month = monthNamed(word);
  if (!month) return std::nullopt;
  rest_.remove_prefix(word.size());
  return Element{*month};
}

std::size_t Pieces::lettersNext() const {
  return static_cast<std::size_t>(std::ranges::find_if_not(rest_, isPartOfWord) - rest_.begin());
}

}  // namespace velmora::mime
