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

bool Pieces::takeBetween(char sign) {
  if (sign != ':') return takeBeforeDigit(sign);
  Pieces ahead = *this;
  ahead.skipBlanksAndComments();
  if (ahead.atEnd() || ahead.take() != sign) return false;
  ahead.skipBlanksAndComments();
  const bool isThere = ahead.isDigitNext();
  if (isThere) *this = ahead;
  return isThere;
}

bool Pieces::skipBlanks(std::string_view blanks) {
  const auto size = std::min(rest_.find_first_not_of(blanks), rest_.size());
  rest_.remove_prefix(size);
  return size > 0;
}

void Pieces::skipBlanksAndComments() {
  for (skipBlanks(); rest_.starts_with('('); skipBlanks()) takeComment();
}

std::string_view Pieces::takeComment() {
  take();
  const std::string_view all = rest_;
  for (std::size_t open = 1; !rest_.empty();) {
    const char c = take();
    if (c == '\\' && !rest_.empty()) take();
    if (c == '(') ++open;
    if (c == ')' && --open == 0) return all.substr(0, all.size() - rest_.size() - 1);
  }
  return all;
}

bool Pieces::isTimeNext() const {
  Pieces ahead = *this;
  return ahead.takeNumber().Digits > 0 && ahead.takeBeforeDigit(':');
}

char Pieces::takeHalf() {
  Pieces ahead = *this;
  const char half = ahead.atEnd() ? ' ' : ascii::lower(ahead.take());
  if (half != 'a' && half != 'p') return ' ';
  ahead.skipBlanks(" \t.");
  if (ahead.atEnd() || ascii::lower(ahead.take()) != 'm' || ahead.isWordNext()) return ' ';
  *this = ahead;
  return half;
}

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
