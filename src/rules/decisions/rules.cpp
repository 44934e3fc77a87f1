#include "rules/decisions/rules.h"

#include <algorithm>

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
  working.RuleCount = live.RuleCount;
  CurrentRule = std::min(CurrentRule, std::max<std::int16_t>(live.RuleCount, 0));
  if (live.RuleCount < 1) return;
  working.head() = live.head();
  working.resize(live.RuleCount);
  for (std::size_t i = 0; i < working.rows().size(); ++i) {
    WorkingRule& rule = working.rows()[i];
    static_cast<Rule&>(rule) = live.rules()[i];
    rule.RedoCount = rule.DescCount;
  }
}

}  // namespace velmora
