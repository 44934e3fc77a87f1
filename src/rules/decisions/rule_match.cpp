#include "rules/decisions/rule_match.h"

#include <algorithm>
#include <span>

#include "platform/text.h"
#include "rules/decisions/rule_entry.h"

namespace velmora {

namespace {

struct TextField {
  std::string_view where;
  std::string MailMessage::*member;
};
constexpr auto textFields = std::to_array<TextField>({
    {"From", &MailMessage::From},
    {"To", &MailMessage::To},
    {"Subject", &MailMessage::Subject},
    {"Body", &MailMessage::Body},
});

constexpr std::size_t nowhere = std::string_view::npos;

/// Where `what` begins, in bytes. A blank text is found in every text but a blank one.
std::size_t position(std::string_view text, std::string_view what) {
  if (text.empty()) return nowhere;
  return what.empty() ? 0 : text::find(text, what);
}

/// The text from the character on that follows `count` and one more.
std::string_view after(std::string_view text, std::size_t count) {
  return text.substr(text::left(text, count + 1).size());
}

/// Criteria with a wildcard: what stands before it and behind it. A further "?" or "*" is a character like any other.
struct Wildcard {
  char sign = '\0';  ///< '?', '*', or none
  std::string_view prefix;
  std::string_view suffix;
};

Wildcard wildcardOf(std::string_view criteria) {
  for (const char sign : {'?', '*'}) {
    const auto at = criteria.find(sign);
    if (at != nowhere) return {sign, criteria.substr(0, at), criteria.substr(at + 1)};
  }
  return {};
}

bool contains(std::string_view capitals, const RuleEntry& entry) {
  const Wildcard wildcard = wildcardOf(entry.Criteria);
  const bool negated = !entry.Not.empty();
  if (wildcard.sign == '\0') return (position(capitals, text::upper(entry.Criteria)) != nowhere) != negated;
  const auto prefix = position(capitals, text::upper(wildcard.prefix));
  const auto suffix = position(capitals, text::upper(wildcard.suffix));
  const bool both = prefix != nowhere && suffix != nowhere;
  if (negated) return !both;
  // A "?" bounds where the suffix begins by the length of the criteria, though only where it isn't negated. Neither
  // wildcard asks for the suffix to stand behind the prefix.
  return both && (wildcard.sign == '*' || suffix < text::left(capitals, text::length(entry.Criteria)).size());
}

bool equals(std::string_view text, const RuleEntry& entry) {
  const Wildcard wildcard = wildcardOf(entry.Criteria);
  const bool negated = !entry.Not.empty();
  if (wildcard.sign == '\0') return (text == entry.Criteria) != negated;
  const std::size_t length = text::length(wildcard.prefix);
  const bool begins = text::left(text, length) == wildcard.prefix;
  // Negated, the star too stands for one character.
  const bool oneCharacter = negated || wildcard.sign == '?';
  const auto end = oneCharacter ? after(text, length) : text::right(text, text::length(wildcard.suffix));
  return (begins && end == wildcard.suffix) != negated;
}

/// "Contains" goes without regard to case, "Equals" does not.
bool testText(const TextField& field, const RuleEntry& entry, RuledMessage& message) {
  if (entry.Condition == "Contains") return contains(message.inCapitals(field.member), entry);
  if (entry.Condition == "Equals") return equals(message.original(field.member), entry);
  return false;
}

/// The negations are no opposites: of two equal sizes neither is greater, nor less.
bool testSize(const RuleEntry& entry, const MailMessage& message) {
  const std::int16_t size = text::toRoundedInt16(message.Size);
  const std::int16_t criteria = text::toRoundedInt16(entry.Criteria);
  const bool negated = !entry.Not.empty();
  if (entry.Condition == "Equals") return (size == criteria) != negated;
  if (entry.Condition == "GreaterThan") return negated ? size < criteria : size > criteria;
  if (entry.Condition == "LessThan") return negated ? size > criteria : size < criteria;
  return false;
}

/// Nothing for an entry that looks at no field there is.
std::optional<bool> testEntry(const RuleEntry& entry, RuledMessage& message) {
  if (entry.Where == "Attachment") return message.message().Attach != !entry.Not.empty();
  if (entry.Where == "Size") return testSize(entry, message.message());
  const auto* const field = std::find_if(textFields.begin(), textFields.end(),
                                         [&entry](const TextField& each) { return each.where == entry.Where; });
  if (field == textFields.end()) return std::nullopt;
  return testText(*field, entry, message);
}

}  // namespace

const std::string& RuledMessage::inCapitals(std::string MailMessage::*field) {
  const std::string& text = original(field);
  auto* const slot = std::find_if(capitals_.begin(), capitals_.end(),
                                  [field](const auto& each) { return !each || each->field == field; });
  if (!*slot) *slot = {field, text::upper(text)};
  return (*slot)->text;
}

bool ruleFits(const Rule& rule, RuledMessage& message) {
  std::array<RuleEntry, mostEntries> parsed;
  const auto entries = std::span(parsed).first(entryCount(rule));
  for (std::size_t i = 0; i < entries.size(); ++i) entries[i] = parseRuleEntry(rule.Description.at(i + 1));
  std::size_t matched = 0;
  for (const RuleEntry& entry : entries) {
    const auto match = testEntry(entry, message);
    if (!match) return false;
    if (*match) ++matched;
  }
  if (matched == 1 && entries.size() == 1) return true;
  // The last entry's conjunction joins all of them.
  const std::string_view conjunction = entries.empty() ? std::string_view() : entries.back().Conjunction;
  return (conjunction == "OR" && matched > 0) || (conjunction == "AND" && matched == entries.size());
}

}  // namespace velmora
