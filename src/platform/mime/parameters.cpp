#include "platform/mime/parameters.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

#include "platform/mime/transfer.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

constexpr std::string_view blanks = " \t";

/// Where a value without quotes ends that should have them.
struct Bare {
  std::string_view name;
  std::string_view ends;
};
constexpr std::string_view usualEnds = "; \t";  // a boundary may hold a comma
constexpr std::array bareValues = {
    Bare{"charset", ";, \t"},
    Bare{"filename", ";"},
    Bare{"name", ";"},
};

std::string_view baseOf(std::string_view name) { return name.substr(0, name.find('*')); }

std::string_view endsOf(std::string_view name) {
  const auto* const found = std::ranges::find_if(
      bareValues, [&](const Bare& bare) { return text::equalsIgnoringCase(bare.name, baseOf(name)); });
  return found == bareValues.end() ? usualEnds : found->ends;
}

}  // namespace

bool Scanner::take(char c) {
  const bool isThere = rest_.starts_with(c);
  if (isThere) rest_.remove_prefix(1);
  return isThere;
}

void Scanner::skip(std::string_view others) {
  while (!rest_.empty()) {
    if (rest_.front() == '(') {
      skipComment();
    } else if (blanks.find(rest_.front()) != blanks.npos || others.find(rest_.front()) != others.npos) {
      rest_.remove_prefix(1);
    } else {
      return;
    }
  }
}

std::string_view Scanner::until(std::string_view ends) {
  const std::string_view taken = rest_.substr(0, rest_.find_first_of(ends));
  rest_.remove_prefix(taken.size());
  return taken;
}

std::string Scanner::quoted() {
  std::string text;
  while (!rest_.empty() && !take('"')) {
    if (take('\\') && rest_.empty()) break;
    text += rest_.front();
    rest_.remove_prefix(1);
  }
  return text;
}

void Scanner::skipComment() {
  std::size_t depth = 0;
  do {
    if (rest_.front() == '(') ++depth;
    if (rest_.front() == ')') --depth;
    rest_.remove_prefix(rest_.front() == '\\' ? std::min<std::size_t>(2, rest_.size()) : 1);
  } while (depth > 0 && !rest_.empty());
}

void readParameters(Scanner& scanner, const TakeParameter& take) {
  for (scanner.skip(";,"); !scanner.atEnd(); scanner.skip(";,")) {
    const std::string_view name = scanner.until("=; \t");
    scanner.skip("");
    if (!scanner.take('=')) continue;
    scanner.skip("");
    if (scanner.take('"'))
      take(name, scanner.quoted());
    else
      take(name, text::trim(scanner.until(endsOf(name))));
  }
}

void Parameter::add(std::string_view name, std::string_view value) {
  if (!text::equalsIgnoringCase(baseOf(name), name_)) return;
  if (name.size() == name_.size()) {
    if (plain_.empty()) plain_ = value;
    return;
  }
  const bool isCoded = name.ends_with('*');
  unsigned number = 0;
  const std::string_view digits = name.substr(name_.size() + 1);
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  sections_.try_emplace(number, Section{std::string(value), isCoded});
}

ParameterText Parameter::text() const {
  if (sections_.empty()) return {plain_, {}};
  ParameterText text;
  for (const auto& [number, section] : sections_) {
    std::string_view value = section.Value;
    // The first section begins with a charset and a language.
    const auto second = section.IsCoded && text.Bytes.empty() ? value.find('\'', value.find('\'') + 1) : value.npos;
    if (second != value.npos) {
      text.Charset = value.substr(0, value.find('\''));
      value.remove_prefix(second + 1);
    }
    text.IsCoded = text.IsCoded || section.IsCoded;
    text.Bytes += section.IsCoded ? decodePercent(value) : value;
  }
  return text;
}

}  // namespace velmora::mime
