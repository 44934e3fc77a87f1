#include "rules/decisions/rule_file.h"

#include <algorithm>
#include <string>

#include "options/decisions/ini_file.h"
#include "platform/text.h"
#include "rules/decisions/rules.h"

namespace velmora {

namespace {

constexpr std::string_view setSection = "Rules";

std::string ruleSection(std::size_t index) { return "Rule" + std::to_string(index + 1); }

std::string entryKey(std::size_t slot) { return "Description" + std::to_string(slot); }

/// A record that is fresh holds the default.
template <class Record>
void readField(IniFile& file, std::string_view section, const Field<Record>& field, Record& record) {
  std::visit(
      [&](auto member) {
        auto& value = record.*member;
        value = fromText(file.KeyGet(section, field.key, toText(value)), value);
      },
      field.member);
}

std::string quoted(const std::string& text) { return '"' + text + '"'; }

/// Some texts would come back as others: what stands in quotation marks or has blanks around it, and "NA", which is
/// none.
std::string keepable(const std::string& text) {
  return text == "NA" || Profile::readBack(text) != text ? quoted(text) : text;
}

/// An entry ends in a blank, which a read takes away with all that is blank at its end. Only more than that needs
/// marks.
std::string keepableEntry(const std::string& entry) {
  const std::string text = entry.substr(0, entry.find_last_not_of(' ') + 1);
  return Profile::readBack(text) != text ? quoted(text) : entry;
}

template <class Record>
void writeField(IniFile& file, std::string_view section, const Field<Record>& field, const Record& record) {
  std::visit([&](auto member) { file.KeySave(keepable(toText(record.*member)), section, field.key); }, field.member);
}

/// A read takes away the blank that every entry ends in.
void readRule(IniFile& file, const std::string& section, Rule& rule) {
  rule = {};
  for (const auto& field : ruleFields()) readField(file, section, field, rule);
  rule.DescCount = static_cast<std::int16_t>(entryCount(rule));
  for (std::size_t slot = 1; slot <= entryCount(rule); ++slot) {
    rule.Description.at(slot) = file.KeyGet(section, entryKey(slot), "") + ' ';
  }
  joinEntries(rule);
}

void writeRule(IniFile& file, const std::string& section, const Rule& rule) {
  for (const auto& field : ruleFields()) writeField(file, section, field, rule);
  for (std::size_t slot = 1; slot <= entryCount(rule); ++slot) {
    file.KeySave(keepableEntry(rule.Description.at(slot)), section, entryKey(slot));
  }
}

}  // namespace

void readRules(IniFile& file, Rules& rules) {
  rules.live.head() = {};
  for (const auto& field : ruleSetFields()) readField(file, setSection, field, rules.live.head());
  rules.live.RuleCount = std::max<std::int16_t>(rules.live.RuleCount, 0);
  rules.ResizeRules(rules.live.RuleCount);
  std::size_t index = 0;
  for (Rule& rule : rules.live.rules()) readRule(file, ruleSection(index++), rule);
}

bool writeRules(IniFile& file, const Rules& rules) {
  const auto working = rules.working.rules();
  file.StartAnew();
  for (const auto& field : ruleSetFields()) writeField(file, setSection, field, rules.working.head());
  std::size_t number = 0;
  for (const Rule& rule : working) writeRule(file, ruleSection(number++), rule);
  return file.Store();
}

}  // namespace velmora
