#include "rules/rule_match.h"

#include <gtest/gtest.h>

#include <random>

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

TEST(RuleMatch, KeepsToTheMeaningOfEachEntry) {
  struct Case {
    const char* entry;
    const char* subject;
    Outcome expected;
  };
  const Case cases[] = {
      // Contains ignores case, Equals does not.
      {"Subject Contains Free Offer ", "a FREE offer", Outcome::Yes},
      {"Subject Contains zürich ", "ZÜRICH", Outcome::Yes},
      {"Subject Equals abc ", "ABC", Outcome::No},
      {"Subject Equals NOT abc ", "ABC", Outcome::Yes},
      // Blank criteria.
      {"Subject Contains ", "x", Outcome::Yes},
      {"Subject Contains ", "", Outcome::No},
      {"Subject Contains NOT ", "", Outcome::Yes},
      {"Subject Equals  ", "", Outcome::Yes},
      // Half a character is none of the text's.
      {"Subject Contains \x84 ", "Ä", Outcome::No},
      {"Subject Contains \x80 ", "𐐀", Outcome::No},
      {"Subject Contains \xC3 ", "Ä", Outcome::No},
      // A criteria that begins with the word is taken for the negation.
      {"Subject Contains NOT free offer ", "free offer", Outcome::No},
      {"Subject Contains NOT  NOT ", "it is not", Outcome::No},
      // With wildcards, Contains doesn't ask for the order.
      {"Subject Contains free*offer ", "OFFER FREE", Outcome::Yes},
      {"Subject Contains aba*ab ", "xaba", Outcome::Yes},
      {"Subject Contains free*offer ", "free", Outcome::No},
      {"Subject Contains NOT free*offer ", "free", Outcome::Yes},
      // A "?" bounds where the suffix stands, though only where it isn't negated.
      {"Subject Contains a?b ", "xab", Outcome::Yes},
      {"Subject Contains a?b ", "xxxxxxxxab", Outcome::No},
      {"Subject Contains NOT a?b ", "xxxxxxxxab", Outcome::No},
      {"Subject Contains a?b ", "äääb", Outcome::No},
      {"Subject Contains ä?b ", "xäb", Outcome::Yes},
      // Negated, the star of Equals stands for one character.
      {"Subject Equals ab*cd ", "abcd", Outcome::Yes},
      {"Subject Equals ab*cd ", "abXYcd", Outcome::Yes},
      {"Subject Equals ab*cd ", "ABcd", Outcome::No},
      {"Subject Equals NOT ab*cd ", "abXYcd", Outcome::Yes},
      {"Subject Equals NOT ab*cd ", "abXcd", Outcome::No},
      {"Subject Equals a*a ", "a", Outcome::Yes},
      {"Subject Equals a?c ", "abc", Outcome::Yes},
      {"Subject Equals a?c ", "aßc", Outcome::Yes},
      {"Subject Equals a?c ", "ac", Outcome::No},
      {"Subject Equals a?c ", "abbc", Outcome::No},
      // The first "?" goes before any "*", and every other wildcard is a character.
      {"Subject Equals *?a ", "*xa", Outcome::Yes},
      {"Subject Equals a*b*c ", "axb*c", Outcome::Yes},
      // What can't be taken apart.
      {"", "x", Outcome::Failure},
      {"Subject", "x", Outcome::Failure},
      {"Subject Contains", "x", Outcome::Failure},
      {"Subject Contains x", "x", Outcome::Failure},
      {"AND", "x", Outcome::Failure},
      {"Subject contains x ", "x", Outcome::No},
      {"subject Contains x ", "x", Outcome::No},
      {" Subject Contains x ", "x", Outcome::No},
      {"Attachment IsPresent ", "x", Outcome::Yes},
      {"Attachment IsPresent  ", "x", Outcome::Yes},
      {"Attachment Rubbish NOT ", "x", Outcome::No},
      {"Attachment IsPresent", "x", Outcome::Failure},
      // Sizes: the message has 2500 KB.
      {"Size Equals 2500 ", "x", Outcome::Yes},
      {"Size Equals 2500.5 ", "x", Outcome::Yes},
      {"Size Equals 2499.5 ", "x", Outcome::Yes},
      {"Size GreaterThan 2500 ", "x", Outcome::No},
      {"Size GreaterThan NOT 2500 ", "x", Outcome::No},
      {"Size LessThan NOT 2499 ", "x", Outcome::Yes},
      {"Size IsPresent 1 ", "x", Outcome::No},
      {"Size GreaterThan 32768 ", "x", Outcome::Failure},
      {"Size GreaterThan 32767.4 ", "x", Outcome::No},
      {"Size GreaterThan -32769 ", "x", Outcome::Failure},
      {"Size GreaterThan large ", "x", Outcome::Failure},
      {"Size GreaterThan 0x10 ", "x", Outcome::Failure},
      {"Size Equals nan ", "x", Outcome::Failure},
      {"Size Equals +2500 ", "x", Outcome::Yes},
      {"Size GreaterThan  ", "x", Outcome::Failure},
  };
  for (const auto& c : cases) {
    MailMessage message;
    message.Subject = c.subject;
    message.Size = "2500";
    message.Attach = true;
    EXPECT_EQ(outcome(ruleOf({c.entry}), message), c.expected) << c.entry << "| " << c.subject;
  }
  MailMessage large;
  large.Size = "33000";
  EXPECT_EQ(outcome(ruleOf({"Size LessThan 5 "}), large), Outcome::Failure);
}

TEST(RuleMatch, JoinsItsEntriesByTheLastConjunction) {
  struct Case {
    std::vector<std::string> entries;
    Outcome expected;
  };
  const Case cases[] = {
      {{}, Outcome::No},
      {{"Subject Contains a ", "AND Subject Contains b "}, Outcome::Yes},
      {{"Subject Contains a ", "AND Subject Contains x "}, Outcome::No},
      {{"Subject Contains x ", "OR Subject Contains b "}, Outcome::Yes},
      {{"Subject Contains x ", "AND Subject Contains y ", "OR Subject Contains a "}, Outcome::Yes},
      {{"Subject Contains a ", "OR Subject Contains x ", "AND Subject Contains b "}, Outcome::No},
      {{"Subject Contains a ", "Subject Contains b "}, Outcome::No},
      {{"AND Subject Contains a "}, Outcome::Yes},
      // No entry settles the rule before all are tested.
      {{"Subject Contains a ", "OR Nothing Contains b "}, Outcome::No},
      {{"Subject Contains a ", "OR Size Equals large "}, Outcome::Failure},
      {{"Nothing Contains a ", "OR Size Equals large "}, Outcome::No},
      {{"Nothing Contains a ", "OR Subject"}, Outcome::Failure},
  };
  MailMessage message;
  message.Subject = "a b";
  message.Size = "1";
  for (const auto& c : cases) {
    EXPECT_EQ(outcome(ruleOf(c.entries), message), c.expected) << (c.entries.empty() ? "" : c.entries.back());
  }
}

/// Texts that meet often: letters whose capitals are longer, shorter or other letters' capitals, bytes that are no
/// characters, keywords, wildcards, and long runs of plain letters.
class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t bound) { return random_() % bound; }
  std::string one(const std::vector<std::string>& of) { return of[below(of.size())]; }

  std::string text(std::size_t most) {
    static const std::vector<std::string> pieces = {"a",
                                                    "A",
                                                    "b",
                                                    "ab",
                                                    "s",
                                                    "S",
                                                    "i",
                                                    "ı",
                                                    "ſ",
                                                    "ɐ",
                                                    "Ɐ",
                                                    "é",
                                                    "É",
                                                    "ǆ",
                                                    "ǅ",
                                                    "ß",
                                                    "日",
                                                    "𐐨",
                                                    "𐐀",
                                                    "\xC3",
                                                    "\xA9",
                                                    "\x80",
                                                    "\xE6\x97",
                                                    "\xC0\xAF",
                                                    "\xED\xA0\x80",
                                                    "?",
                                                    "*",
                                                    "\xF4\x90\x80\x80",
                                                    "\xF0\x80\x80\x80",
                                                    "\xF8\x90\x80\x80",
                                                    " ",
                                                    "NOT",
                                                    "x",
                                                    "x",
                                                    "x",
                                                    "aNeedleInAHaystackOfMoreLetters"};
    std::string result;
    for (std::size_t i = below(most + 1); i > 0; --i) result += one(pieces);
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
