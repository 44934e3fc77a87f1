#include "rules/decisions/rule_entry.h"

#include "platform/failure.h"
#include "platform/text.h"

namespace velmora {

namespace {

/// Takes off what stands before the next blank, and the blank.
std::string_view takeWord(std::string_view& rest) {
  const auto blank = rest.find(' ');
  if (blank == std::string_view::npos) throw invalidCallFailure();
  const auto word = rest.substr(0, blank);
  rest.remove_prefix(blank + 1);
  return word;
}

}  // namespace

RuleEntry parseRuleEntry(std::string_view description) {
  RuleEntry entry;
  std::string_view rest = description;
  const auto first = rest.substr(0, rest.find(' '));
  if (first == "AND" || first == "OR") entry.Conjunction = takeWord(rest);
  entry.Where = takeWord(rest);
  entry.Condition = takeWord(rest);
  if (rest.empty()) return entry;
  auto afterNot = rest;
  if (takeWord(afterNot) == "NOT") {
    entry.Not = "NOT";
    rest = afterNot;
  }
  entry.Criteria = text::trim(rest);
  return entry;
}

}  // namespace velmora
