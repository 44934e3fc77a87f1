#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "platform/failure.h"
#include "platform/settings.h"

namespace velmora {

/// The account of a rule that holds for all of them.
inline constexpr std::string_view allAccounts = "All Accounts";

/// Description entries that a rule may have.
inline constexpr std::int16_t mostEntries = 10;

/// What to do with a message that fits a list of conditions.
struct Rule {
  static constexpr std::int16_t deleteFromServer = 1;
  static constexpr std::int16_t markAsSpam = 2;
  static constexpr std::int16_t ignore = 3;

  std::string Name = "Rule";
  std::int16_t Enabled = 1;
  std::string Account{allAccounts};  ///< the name of the account that it holds for, or "All Accounts"
  std::int16_t Action = markAsSpam;
  std::int16_t DescCount = 0;  ///< entries, 0 to 10
  /// The entries in their text form (rule_entry.h), from slot 1 on. Slot 0 holds them all joined, for display.
  std::array<std::string, mostEntries + 1> Description;
};

/// The entries that a rule has, within the bounds of its slots whatever DescCount says.
std::size_t entryCount(const Rule& rule);

/// A rule on the Rules page.
struct WorkingRule : Rule {
  std::int16_t RedoCount = 0;  ///< the highest DescCount since the rule was loaded
};

/// What a set of rules has beside them. The three values of the Rule Report hold for all rules.
struct RuleSetHead {
  std::int16_t RuleCount = 0;
  std::int16_t Show = 0;     ///< 1: a check may open the Rule Report
  std::int16_t ShowNew = 0;  ///< 1: only new messages open it
  std::int16_t Time = 30;    ///< seconds that it stays
};

/// The values as they are kept, in that order. A rule's entries come behind its own.
std::span<const Field<RuleSetHead>> ruleSetFields();
std::span<const Field<Rule>> ruleFields();

/// Rules, numbered from 1 in the order of their evaluation. There may be room for more than RuleCount.
template <class Row>
class RuleSet : public RuleSetHead {
 public:
  /// Throws subscriptFailure for a number that there is no room for.
  Row& operator[](std::int16_t number) { return rows_[index(number)]; }
  const Row& operator[](std::int16_t number) const { return rows_[index(number)]; }

  /// Makes room for rules 1 to `count` and keeps those that fit.
  void resize(std::int16_t count) { rows_.resize(count < 1 ? 0 : static_cast<std::size_t>(count)); }

  RuleSetHead& head() { return *this; }
  const RuleSetHead& head() const { return *this; }

  /// As many as there is room for.
  std::span<Row> rows() { return rows_; }

  /// Rules 1 to RuleCount. Throws subscriptFailure where there is no room for them.
  std::span<Row> rules() { return rows().first(roomForAll()); }
  std::span<const Row> rules() const { return std::span(rows_).first(roomForAll()); }

 private:
  std::size_t index(std::int16_t number) const {
    if (number < 1 || static_cast<std::size_t>(number) > rows_.size()) throw subscriptFailure();
    return static_cast<std::size_t>(number - 1);
  }

  std::size_t roomForAll() const { return RuleCount < 1 ? 0 : index(RuleCount) + 1; }

  std::vector<Row> rows_;
};

/// The user's rules twice: the live set is what checks go by, the working set what the Rules page edits. Only reading
/// the Rules file and saving the page change the live set.
struct Rules {
  RuleSet<Rule> live;
  RuleSet<WorkingRule> working;
  std::int16_t CurrentRule = 0;  ///< the rule showing on the page, 0 for none

  /// Makes room for `count` rules in both sets and keeps those that fit. Entries beyond a rule's DescCount are lost,
  /// and the entries of the working set become those of the live one.
  void ResizeRules(std::int16_t count);

  /// Makes the working set equal to the live one, with nothing to redo.
  void CopyRulesToWorking();
};

/// Joins a rule's entries in slot 0.
void joinEntries(Rule& rule);

/// Rules that a set can have.
inline constexpr std::int16_t mostRules = std::numeric_limits<std::int16_t>::max();

// What the page does to the working set. The live set stays.

/// Appends a rule without entries and makes it the current one. Throws overflowFailure where there is no room.
void addRule(Rules& rules);

/// Takes the current rule out; the one behind it is the current one then, or else the last.
void deleteRule(Rules& rules);

/// Exchanges the current rule with the one before it or behind it, and keeps it the current one. Throws
/// subscriptFailure where there is none.
void moveRule(Rules& rules, bool up);

/// The working set is other than the live one.
bool isChanged(const Rules& rules);

/// Makes the live set equal to the working one. Throws subscriptFailure, with nothing done, where that has no room for
/// its RuleCount.
void takeWorking(Rules& rules);

}  // namespace velmora
