#include "rules/decisions/rule_builder.h"

#include <algorithm>
#include <array>

#include "platform/failure.h"
#include "platform/text.h"
#include "rules/decisions/rule_entry.h"

namespace velmora {

namespace {

constexpr std::array<const char*, 2> ofText = {"Contains", "Equals"};
constexpr std::array<const char*, 1> ofAttachment = {"IsPresent"};
constexpr std::array<const char*, 3> ofSize = {"Equals", "GreaterThan", "LessThan"};

constexpr std::array<WhereChoice, 6> choices = {{
    {"From", ofText, "Enter Names or Addresses...", true},
    {"To", ofText, "Enter Names or Addresses...", true},
    {"Subject", ofText, "Enter Text...", true},
    {"Body", ofText, "Enter Text...", true},
    {"Attachment", ofAttachment, "Attachment Requires No Text...", false},
    {"Size", ofSize, "Enter Number in KB...", true},
}};

bool hasCondition(const WhereChoice& choice, std::string_view condition) {
  return std::ranges::find(choice.conditions, condition) != choice.conditions.end();
}

std::string entryText(const EntryParts& parts, bool isFirst) {
  const std::string boolean = isFirst ? "" : parts.Boolean + ' ';
  const std::string negation = parts.Not.empty() ? " " : " NOT ";
  return boolean + parts.Where + ' ' + parts.Condition + negation + parts.Criteria + ' ';
}

void setCount(WorkingRule& rule, std::size_t count) {
  rule.DescCount = static_cast<std::int16_t>(count);
  joinEntries(rule);
}

bool isSize(std::string_view criteria) {
  try {
    text::toRoundedInt16(criteria);
    return true;
  } catch (const RunTimeFailure&) {
    return false;
  }
}

}  // namespace

std::span<const WhereChoice> whereChoices() { return choices; }

const WhereChoice* choiceOf(std::string_view where) {
  const auto* const found = std::ranges::find(choices, where, &WhereChoice::where);
  return found == choices.end() ? nullptr : found;
}

std::string keptCondition(const WhereChoice& choice, const std::string& condition) {
  return hasCondition(choice, condition) ? condition : choice.conditions.front();
}

EntryParts partsOf(const std::string& entry) {
  try {
    const RuleEntry parsed = parseRuleEntry(entry);
    const WhereChoice* choice = choiceOf(parsed.Where);
    if (choice == nullptr || !hasCondition(*choice, parsed.Condition)) return {};
    return {std::string(parsed.Where), std::string(parsed.Condition), std::string(parsed.Criteria),
            std::string(parsed.Conjunction), std::string(parsed.Not)};
  } catch (const RunTimeFailure&) {
    return {};
  }
}

bool isComplete(const EntryParts& parts) {
  const WhereChoice* choice = choiceOf(parts.Where);
  if (choice == nullptr || !hasCondition(*choice, parts.Condition)) return false;
  return !choice->takesCriteria || !parts.Criteria.empty();
}

void addEntry(WorkingRule& rule, const EntryParts& parts) {
  const std::size_t slot = entryCount(rule) + 1;
  if (slot > static_cast<std::size_t>(mostEntries)) throw subscriptFailure();
  rule.Description.at(slot) = entryText(parts, slot == 1);
  setCount(rule, slot);
  rule.RedoCount = std::max(rule.RedoCount, rule.DescCount);
  rewriteConjunctions(rule, parts.Boolean);
}

void rewriteConjunctions(Rule& rule, std::string_view conjunction) {
  const bool isAnd = conjunction == "AND";
  for (std::size_t slot = 1; slot <= entryCount(rule); ++slot) {
    std::string& entry = rule.Description.at(slot);
    entry = text::replaceAll(entry, isAnd ? "OR" : "AND", isAnd ? "AND" : "OR");
  }
  joinEntries(rule);
}

void clearEntries(WorkingRule& rule) {
  rule.Description.fill("");
  rule.DescCount = rule.RedoCount = 0;
}

void undoEntry(WorkingRule& rule) {
  if (entryCount(rule) > 0) setCount(rule, entryCount(rule) - 1);
}

void redoEntry(WorkingRule& rule) {
  if (rule.DescCount < rule.RedoCount) setCount(rule, entryCount(rule) + 1);
}

std::string entriesText(const Rule& rule) { return std::to_string(entryCount(rule)) + " of 10 Entries"; }

std::string criteriaNotice(const EntryParts& parts, const EntryParts& last) {
  if (!isComplete(parts)) return {};
  if (parts.Where == "Size" && !isSize(parts.Criteria)) {
    return "No number from 0 to 32767: such a rule would show a message box for each message.";
  }
  const bool isLast = EntryParts{parts.Where, parts.Condition, parts.Criteria, last.Boolean, parts.Not} == last;
  return isLast ? "" : "Not in the rule yet: press Update Description.";
}

}  // namespace velmora
