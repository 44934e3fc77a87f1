#include "rules/decisions/rule_match.h"

#include <gtest/gtest.h>

#include "platform/failure.h"

namespace velmora {
namespace {

enum class Outcome { No, Yes, Failure };
using enum Outcome;

Outcome outcome(const std::vector<std::string>& entries, const MailMessage& message) {
  Rule rule;
  rule.DescCount = static_cast<std::int16_t>(entries.size());
  for (std::size_t i = 0; i < entries.size(); ++i) rule.Description.at(i + 1) = entries[i];
  RuledMessage ruled(message);
  try {
    return ruleFits(rule, ruled) ? Yes : No;
  } catch (const RunTimeFailure&) {
    return Failure;
  }
}

TEST(RuleMatch, TestsAText) {
  struct Case {
    const char* entry;
    const char* subject;
    Outcome plain;
    Outcome negated;  ///< with NOT in front of the criteria
  };
  const Case cases[] = {
      {"Contains ab", "xAby", Yes, No},
      {"Contains ab", "ba", No, Yes},
      {"Contains free offer", "a FREE OFFER", Yes, No},
      {"Contains é", "CAFÉ", Yes, No},
      {"Contains 日", "今日", Yes, No},
      {"Contains ı", "i", Yes, No},
      {"Contains ß", "SS", No, Yes},
      {"Contains \xA9", "é", No, Yes},
      {"Contains \x80", "a\x80", Yes, No},
      {"Contains ", "a", Yes, No},
      {"Contains ", "", No, Yes},
      {"Contains free*offer", "OFFER FREE", Yes, No},
      {"Contains free*offer", "free", No, Yes},
      {"Contains *", "a", Yes, No},
      {"Contains *", "", No, Yes},
      {"Contains a?b", "ab", Yes, No},
      {"Contains a?b", "xxab", No, No},  // the suffix stands beyond the length of the criteria
      {"Contains a?b", "xab", Yes, No},
      {"Contains é?ß", "xéß", Yes, No},  // which counts characters
      {"Contains é?ß", "xxéß", No, No},
      {"Contains a*?b", "a*b", Yes, No},  // the ? comes first, whatever stands before it
      {"Contains a*?b", "ab", No, Yes},
      {"Contains a?b?", "xb?a", Yes, No},  // and the second is a letter
      {"Equals ab", "ab", Yes, No},
      {"Equals ab", "aB", No, Yes},
      {"Equals ", "", Yes, No},
      {"Equals ", "a", No, Yes},
      {"Equals ab*cd", "abcd", Yes, Yes},
      {"Equals ab*cd", "abXYcd", Yes, Yes},
      {"Equals ab*cd", "abXcd", Yes, No},  // negated, the star is one character
      {"Equals ab*cd", "ABcd", No, Yes},
      {"Equals aba*aba", "aba", Yes, Yes},  // they may overlap
      {"Equals x*xb", "xxb", Yes, Yes},
      {"Equals é*é", "éXé", Yes, No},
      {"Equals ab*", "abX", Yes, No},
      {"Equals ab*", "abXY", Yes, Yes},
      {"Equals *", "", Yes, No},
      {"Equals a**", "ab", No, Yes},
      {"Equals a**", "ab*", Yes, No},
      {"Equals a?c", "abc", Yes, No},
      {"Equals a?c", "aéc", Yes, No},
      {"Equals a?c", "ac", No, Yes},
      {"Equals a?c", "abbc", No, Yes},
      {"Equals a?c", "Abc", No, Yes},
      {"Equals a?", "a", Yes, No},
      {"Equals a?*", "ab*", Yes, No},
      {"contains ab", "ab", No, No},
      {"Is ab", "ab", No, No},
  };
  for (const auto& [entry, subject, plain, negated] : cases) {
    MailMessage message;
    message.Subject = subject;
    std::string text = std::string("Subject ") + entry + ' ';
    EXPECT_EQ(outcome({text}, message), plain) << text << '|' << subject;
    text.insert(text.find(' ', 8) + 1, "NOT ");
    EXPECT_EQ(outcome({text}, message), negated) << text << '|' << subject;
  }
}

TEST(RuleMatch, ReadsEntriesAndJoinsThemItsOwnWay) {
  const std::pair<std::vector<std::string>, Outcome> cases[] = {
      {{}, No},
      {{"From Equals ann "}, Yes},
      {{"To Equals bob "}, Yes},
      {{"Body Equals text "}, Yes},
      {{"from Equals ann "}, No},
      {{"Attachment IsPresent "}, Yes},
      {{"Attachment Rubbish NOT "}, No},
      {{"Size Equals 2 "}, Yes},
      {{"Size Equals NOT 2 "}, No},
      {{"Size GreaterThan 2 "}, No},
      {{"Size GreaterThan NOT 2 "}, No},
      {{"Size GreaterThan 1 "}, Yes},
      {{"Size GreaterThan NOT 3 "}, Yes},
      {{"Size LessThan 3 "}, Yes},
      {{"Size LessThan NOT 2 "}, No},
      {{"Size LessThan NOT 1 "}, Yes},
      {{"Size Contains 2 "}, No},
      {{"Size Equals 1.5 "}, Yes},
      {{"Size Equals 2.5 "}, Yes},
      {{"Size Equals +2 "}, Yes},
      {{"Size Equals 2e0 "}, Yes},
      {{"Size Equals +-2 "}, Failure},
      {{"Size Equals nan "}, Failure},
      {{"Size GreaterThan 0x1 "}, Failure},
      {{"Size Equals "}, Failure},
      {{"Size LessThan 32767.4 "}, Yes},
      {{"Size LessThan 32768 "}, Failure},
      {{"Size GreaterThan -32769 "}, Failure},
      {{"Subject Contains NOT "}, No},
      {{"Subject Contains ab"}, Failure},
      {{"Subject Contains"}, Failure},
      {{"Subject"}, Failure},
      {{""}, Failure},
      {{"AND Subject Equals ab "}, Yes},
      {{"Subject Equals ab ", "AND From Equals ann "}, Yes},
      {{"Subject Equals ab ", "AND From Equals x "}, No},
      {{"Subject Equals ab ", "OR From Equals x "}, Yes},
      {{"Subject Equals x ", "OR From Equals x "}, No},
      {{"Subject Equals ab ", "From Equals ann "}, No},  // the last entry's word joins all, if it has one
      {{"Subject Equals ab ", "AND From Equals x ", "OR To Equals x "}, Yes},
      {{"Subject Equals ab ", "OR From Equals x ", "AND To Equals bob "}, No},
      {{"Subject Equals ab ", "OR Nothing Equals x "}, No},
      {{"Subject Equals ab ", "OR Size Equals x "}, Failure},
      {{"Nothing Equals x ", "OR Size Equals x "}, No},
      {{"Nothing Equals x ", "OR Size"}, Failure},  // all are read before any is tested
  };
  MailMessage message;
  message.From = "ann";
  message.To = "bob";
  message.Subject = "ab";
  message.Body = "text";
  message.Size = "2";
  message.Attach = true;
  for (const auto& [entries, expected] : cases)
    EXPECT_EQ(outcome(entries, message), expected) << (entries.empty() ? "none" : entries.front() + entries.back());
  message.Size = "33000";
  EXPECT_EQ(outcome({"Size GreaterThan 1 "}, message), Failure);
}

}  // namespace
}  // namespace velmora
