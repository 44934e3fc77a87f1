#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <locale>
#include <map>
#include <string>
#include <vector>

#include "messages/decisions/message_store.h"
#include "rules/decisions/rules.h"

namespace velmora::test {

/// What rules mean, read plainly: character by character, step by step, as slow as it likes. What the program does in
/// its own way must give the same.
class PlainRule {
 public:
  struct Failure {};

  PlainRule(const Rule& rule, const MailMessage& message) : rule_(rule), message_(message) {}

  /// Throws Failure.
  bool fits() {
    parse();
    return test() && join();
  }

 private:
  using Text = std::u32string;  // a byte that is no part of a character has a number beyond all characters
  struct Entry {
    Text where, condition, negation, criteria;
    bool match = false;
  };

  static Text characters(const std::string& bytes) {
    Text result;
    for (std::size_t i = 0; i < bytes.size();) {
      const auto byte = [&](std::size_t at) { return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U; };
      std::size_t size = byte(i) < 0x80 || byte(i) > 0xF4 ? 1 : byte(i) < 0xE0 ? 2 : byte(i) < 0xF0 ? 3 : 4;
      char32_t code = size == 1 ? byte(i) : byte(i) & (0x7FU >> size);
      for (std::size_t k = 1; k < size; ++k) {
        if ((byte(i + k) & 0xC0U) != 0x80U) code = 0xFFFFFFFF;
        if (code != 0xFFFFFFFF) code = code << 6U | (byte(i + k) & 0x3FU);
      }
      constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
      const bool valid = byte(i) < 0x80 || (size > 1 && byte(i) >= 0xC0 && code >= least[size] && code <= 0x10FFFF &&
                                            (code < 0xD800 || code > 0xDFFF));
      result += valid ? code : 0x110000 + byte(i);
      i += valid ? size : 1;
    }
    return result;
  }

  static Text upper(Text text) {
    static const std::locale locale("C.UTF-8");
    for (char32_t& c : text) {
      if (c < 0x110000) c = static_cast<char32_t>(std::toupper(static_cast<wchar_t>(c), locale));
    }
    return text;
  }

  // Positions count from 1; 0 is nowhere.
  static std::size_t pos(const Text& x, const Text& y, std::size_t from = 1) {
    if (x.empty() || from > x.size()) return 0;
    return x.find(y, from - 1) + 1;
  }
  static Text mid(const Text& x, std::size_t from, std::size_t length) {
    return from > x.size() ? Text() : x.substr(from - 1, length);
  }
  static Text left(const Text& x, std::size_t n) { return x.substr(0, n); }
  static Text right(const Text& x, std::size_t n) { return n > x.size() ? x : x.substr(x.size() - n); }
  static Text after(const Text& x, std::size_t n) { return mid(x, n, Text::npos); }
  static Text trim(Text x) {
    while (!x.empty() && x.front() == U' ') x.erase(0, 1);
    while (!x.empty() && x.back() == U' ') x.pop_back();
    return x;
  }

  void parse() {
    for (int i = 1; i <= rule_.DescCount; ++i) {
      const Text d = characters(rule_.Description.at(static_cast<std::size_t>(i)));
      entries_.push_back(parseEntry(d));
    }
  }

  static std::size_t blankFrom(const Text& d, std::size_t s) {
    const std::size_t p = pos(d, U" ", s);
    if (p < s) throw Failure();
    return p;
  }

  Entry parseEntry(const Text& d) {
    Entry entry;
    std::size_t p = pos(d, U" ");
    const Text t = trim(left(d, p));
    const bool joins = t == U"AND" || t == U"OR";
    conjunction_ = joins ? t : U"";
    std::size_t s = joins ? p + 1 : 1;
    p = blankFrom(d, s);
    entry.where = trim(mid(d, s, p - s));
    s = p + 1;
    p = blankFrom(d, s);
    entry.condition = trim(mid(d, s, p - s));
    s = p + 1;
    if (s > d.size()) return entry;
    p = blankFrom(d, s);
    if (trim(mid(d, s, p - s)) == U"NOT") {
      entry.negation = U"NOT";
      s = p + 1;
    }
    entry.criteria = trim(after(d, s));
    return entry;
  }

  bool test() {
    const std::map<Text, std::string MailMessage::*> fields = {{U"From", &MailMessage::From},
                                                               {U"To", &MailMessage::To},
                                                               {U"Subject", &MailMessage::Subject},
                                                               {U"Body", &MailMessage::Body}};
    for (Entry& e : entries_) {
      const bool negated = e.negation == U"NOT";
      if (const auto field = fields.find(e.where); field != fields.end()) {
        e.match = testText(characters(message_.*field->second), e);
      } else if (e.where == U"Attachment") {
        e.match = negated ? !message_.Attach : message_.Attach;
      } else if (e.where == U"Size") {
        e.match = testSize(e);
      } else {
        return false;
      }
    }
    return true;
  }

  static bool testText(const Text& f, const Entry& e) {
    const Text& c = e.criteria;
    const bool negated = e.negation == U"NOT";
    const bool contains = e.condition == U"Contains";
    if (!contains && e.condition != U"Equals") return false;
    const std::size_t q = pos(c, U"?");
    const std::size_t a = pos(c, U"*");
    if (q < 1 && a < 1) {
      if (contains) return negated ? pos(upper(f), upper(c)) == 0 : pos(upper(f), upper(c)) >= 1;
      return negated ? f != c : f == c;
    }
    const std::size_t wildcard = q >= 1 ? q : a;
    const Text p = left(c, wildcard - 1);
    const Text s = after(c, wildcard + 1);
    if (contains) {
      const std::size_t first = pos(upper(f), upper(p));
      const std::size_t second = pos(upper(f), upper(s));
      if (negated) return first == 0 || second == 0;
      if (q >= 1) return first >= 1 && second >= 1 && second <= c.size();
      return first >= 1 && second >= 1;
    }
    if (negated) return left(f, p.size()) != p || after(f, p.size() + 2) != s;
    if (q >= 1) return left(f, p.size()) == p && after(f, p.size() + 2) == s;
    return left(f, p.size()) == p && right(f, s.size()) == s;
  }

  static int number(const std::string& text) {
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0') throw Failure();
    const double rounded = std::nearbyint(value);
    if (rounded < -32768 || rounded > 32767) throw Failure();
    return static_cast<int>(rounded);
  }

  bool testSize(const Entry& e) {
    const int f = number(message_.Size);
    const int c = number(std::string(e.criteria.begin(), e.criteria.end()));
    const bool negated = e.negation == U"NOT";
    if (e.condition == U"Equals") return negated ? f != c : f == c;
    if (e.condition == U"GreaterThan") return negated ? f < c : f > c;
    if (e.condition == U"LessThan") return negated ? f > c : f < c;
    return false;
  }

  bool join() const {
    if (entries_.size() == 1 && entries_[0].match) return true;
    std::size_t matched = 0;
    for (const Entry& e : entries_) {
      if (conjunction_ == U"OR" && e.match) return true;
      if (conjunction_ == U"AND" && e.match) ++matched;
    }
    return conjunction_ == U"AND" && matched == entries_.size();
  }

  const Rule& rule_;
  const MailMessage& message_;
  std::vector<Entry> entries_;
  Text conjunction_;
};

}  // namespace velmora::test
