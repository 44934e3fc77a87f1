#include "rules/decisions/rules.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"

namespace velmora {

namespace {

constexpr auto setFields = std::to_array<Field<RuleSetHead>>({
    {"RuleCount", &RuleSetHead::RuleCount},
    {"Show", &RuleSetHead::Show},
    {"ShowNew", &RuleSetHead::ShowNew},
    {"Time", &RuleSetHead::Time},
});

constexpr auto fields = std::to_array<Field<Rule>>({
    {"Name", &Rule::Name},
    {"Enabled", &Rule::Enabled},
    {"Account", &Rule::Account},
    {"Action", &Rule::Action},
    {"DescCount", &Rule::DescCount},
});

template <class Record>
bool differ(const Record& a, const Record& b, std::span<const Field<Record>> all) {
  return std::ranges::any_of(all, [&](const Field<Record>& field) { return !isEqual(field, a, b); });
}

/// Entries beyond the count are none.
bool isSameRule(const Rule& a, const Rule& b) {
  const auto entries = [](const Rule& rule) { return std::span(rule.Description).subspan(1, entryCount(rule)); };
  return !differ<Rule>(a, b, fields) && std::ranges::equal(entries(a), entries(b));
}

void dropFurtherEntries(Rule& rule) {
  std::fill(rule.Description.begin() + 1 + static_cast<std::ptrdiff_t>(entryCount(rule)), rule.Description.end(), "");
  joinEntries(rule);
}

}  // namespace

std::size_t entryCount(const Rule& rule) {
  return static_cast<std::size_t>(std::clamp<std::int16_t>(rule.DescCount, 0, mostEntries));
}

std::span<const Field<RuleSetHead>> ruleSetFields() { return setFields; }
std::span<const Field<Rule>> ruleFields() { return fields; }

void joinEntries(Rule& rule) {
  std::string joined;
  for (std::size_t slot = 1; slot <= entryCount(rule); ++slot) joined += rule.Description.at(slot);
  rule.Description[0] = std::move(joined);
}

void Rules::ResizeRules(std::int16_t count) {
  live.resize(count);
  working.resize(count);
  for (std::size_t i = 0; i < live.rows().size(); ++i) {
    dropFurtherEntries(live.rows()[i]);
    working.rows()[i].Description = live.rows()[i].Description;
  }
}

void Rules::CopyRulesToWorking() {
  CurrentRule = std::min(CurrentRule, live.RuleCount);
  working.head() = live.head();
  working.resize(live.RuleCount);
  for (std::size_t i = 0; i < working.rows().size(); ++i) {
    WorkingRule& rule = working.rows()[i];
    static_cast<Rule&>(rule) = live.rules()[i];
    rule.RedoCount = rule.DescCount;
  }
}

void addRule(Rules& rules) {
  const std::int16_t number = text::toInt16(std::int64_t{rules.working.RuleCount} + 1);
  rules.working.resize(number);
  rules.working.RuleCount = rules.CurrentRule = number;
  rules.working[number] = {};
  rules.working[number].Name = "Rule" + std::to_string(number);
}

void deleteRule(Rules& rules) {
  const auto all = rules.working.rules();
  const auto behind = all.subspan(static_cast<std::size_t>(rules.CurrentRule));
  std::ranges::move(behind, all.begin() + (rules.CurrentRule - 1));
  --rules.working.RuleCount;
  rules.working.resize(rules.working.RuleCount);
  rules.CurrentRule = std::min(rules.CurrentRule, rules.working.RuleCount);
}

void moveRule(Rules& rules, bool up) {
  const auto other = static_cast<std::int16_t>(rules.CurrentRule + (up ? -1 : 1));
  std::swap(rules.working[rules.CurrentRule], rules.working[other]);
  rules.CurrentRule = other;
}

bool isChanged(const Rules& rules) {
  if (differ<RuleSetHead>(rules.live.head(), rules.working.head(), setFields)) return true;
  return !std::ranges::equal(rules.live.rules(), rules.working.rules(), isSameRule);
}

void takeWorking(Rules& rules) {
  const auto working = rules.working.rules();
  rules.live.resize(rules.working.RuleCount);
  rules.live.head() = rules.working.head();
  std::ranges::copy(working, rules.live.rules().begin());
  for (Rule& rule : rules.live.rules()) dropFurtherEntries(rule);
}

}  // namespace velmora
