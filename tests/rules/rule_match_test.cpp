#include "rules/decisions/rule_match.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <sstream>

#include "platform/failure.h"
#include "rules/plain_rules.h"

namespace velmora {
namespace {

enum class Outcome { No, Yes, Failure };

Outcome outcome(const Rule& rule, const MailMessage& message) {
  RuledMessage ruled(message);
  try {
    return ruleFits(rule, ruled) ? Outcome::Yes : Outcome::No;
  } catch (const RunTimeFailure&) {
    return Outcome::Failure;
  }
}

Outcome plainOutcome(const Rule& rule, const MailMessage& message) {
  try {
    return test::PlainRule(rule, message).fits() ? Outcome::Yes : Outcome::No;
  } catch (const test::PlainRule::Failure&) {
    return Outcome::Failure;
  }
}

Rule ruleOf(const std::vector<std::string>& entries) {
  Rule rule;
  rule.DescCount = static_cast<std::int16_t>(entries.size());
  for (std::size_t i = 0; i < entries.size(); ++i) rule.Description.at(i + 1) = entries[i];
  return rule;
}

TEST(RuleMatch, ReadsNumbersAndOddEntriesItsOwnWay) {
  const std::pair<const char*, Outcome> cases[] = {
      // What the library's numbers are beyond those of the rules.
      {"Size GreaterThan 0x10 ", Outcome::Failure},
      {"Size Equals nan ", Outcome::Failure},
      {"Size Equals +2 ", Outcome::Yes},
      {"Size Equals +-2 ", Outcome::Failure},
      // The outermost numbers, after rounding.
      {"Size GreaterThan 32768 ", Outcome::Failure},
      {"Size LessThan 32767.4 ", Outcome::Yes},
      {"Size GreaterThan -32769 ", Outcome::Failure},
      // A few oddities in so many words.
      {"Subject Contains NOT ", Outcome::No},
      {"Subject Contains A?b ", Outcome::No},
      {"Subject Equals NOT ab*b ", Outcome::Yes},
      {"Attachment Rubbish NOT ", Outcome::Yes},
      {"Subject contains ab ", Outcome::No},
      {"Subject Contains ab", Outcome::Failure},
  };
  MailMessage message;
  message.Subject = "xxxxabxxb";
  message.Size = "2";
  for (const auto& [entry, expected] : cases) EXPECT_EQ(outcome(ruleOf({entry}), message), expected) << entry;
}

std::vector<std::string> words(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

/// Texts that meet often: letters whose capitals are longer, shorter or other letters' capitals, bytes that are no
/// characters, keywords, wildcards, and long runs of plain letters.
class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t bound) { return random_() % bound; }
  std::string one(const std::vector<std::string>& of) { return of[below(of.size())]; }

  std::string text(std::size_t most) {
    static const std::vector<std::string> pieces = words(
        "a A b ab s S i ı ſ ɐ Ɐ é É ǆ ǅ ß 日 𐐨 𐐀 \xC3 \xA9 \x80 \xE6\x97 \xC0\xAF \xED\xA0\x80 ? * \xF4\x90\x80\x80 "
        "\xF4\x8F\xBF\xBF "
        "\xF0\x80\x80\x80 \xF8\x90\x80\x80 NOT x x x aNeedleInAHaystackOfMoreLetters _");
    std::string result;
    for (std::size_t i = below(most + 1); i > 0; --i) result += one(pieces);
    std::ranges::replace(result, '_', ' ');
    return result;
  }

  /// Often a part of a text of the message, with a wildcard in place of some of it.
  std::string criteria(const MailMessage& message) {
    if (below(3) == 0) return text(5);
    const std::string& from = *std::vector{&message.From, &message.To, &message.Subject, &message.Body}[below(4)];
    std::string part = from.substr(below(from.size() + 1));
    if (below(2) == 0) part = part.substr(0, below(part.size() + 1));
    if (below(2) == 0) part.replace(below(part.size() + 1), below(4), below(2) == 0 ? "?" : "*");
    return part;
  }

  std::string entry(const MailMessage& message) {
    const std::string where = one({"From", "To", "Subject", "Body", "From", "To", "Subject", "Body", "Attachment",
                                   "Size", below(9) == 0 ? "from" : "Subject"});
    const std::string condition =
        one({"Contains", "Contains", "Equals", "Equals", below(3) == 0 ? "GreaterThan" : "Equals",
             below(3) == 0 ? "LessThan" : "Contains", below(9) == 0 ? "equals" : "Equals"});
    std::string result = one({"", "", "AND ", "OR ", "AND ", below(9) == 0 ? "AND" : "OR "}) + where + ' ' + condition;
    result += below(3) == 0 ? " NOT " : " ";
    result += where == "Size" ? one({"0", "1", "2", "1.5", "2.5", "-1", "40000", "x", "", "1e1"}) : criteria(message);
    return below(30) == 0 ? result : result + ' ';
  }

  Rule rule(const MailMessage& message) {
    std::vector<std::string> entries;
    const std::size_t count = below(10) == 0 ? 0 : 1 + below(below(3) == 0 ? 4 : 1);
    while (entries.size() < count) entries.push_back(entry(message));
    return ruleOf(entries);
  }

  MailMessage message() {
    MailMessage message;
    message.From = text(3);
    message.To = text(6);
    message.Subject = text(8);
    message.Body = text(60);
    message.Size = below(50) == 0 ? "33000" : std::to_string(below(4));
    message.Attach = below(2) == 0;
    return message;
  }

 private:
  std::mt19937 random_;
};

TEST(RuleMatch, MeansWhatAPlainReadingOfRulesMeans) {
  Generator generate(20261121);
  int count[3] = {};
  for (int i = 0; i < 50'000; ++i) {
    const MailMessage message = generate.message();
    const Rule rule = generate.rule(message);
    const Outcome expected = plainOutcome(rule, message);
    ++count[static_cast<int>(expected)];
    ASSERT_EQ(outcome(rule, message), expected)
        << i << ": " << rule.Description[1] << "|" << rule.Description[2] << "\nFrom " << message.From << "\nTo "
        << message.To << "\nSubject " << message.Subject << "\nBody " << message.Body;
  }
  for (const int each : count) EXPECT_GT(each, 2500) << "every outcome is worth a test";
}

}  // namespace
}  // namespace velmora
