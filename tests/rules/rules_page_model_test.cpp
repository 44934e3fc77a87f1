#include <gmock/gmock.h>

#include <algorithm>

#include "rules/decisions/rule_builder.h"
#include "support/random_steps.h"

namespace velmora {
namespace {

using Texts = std::vector<std::string>;

const Texts wheres = {"From", "To", "Subject", "Body", "Attachment", "Size"};
const Texts texts = {"bob",   "FLORIDA", "AND",  "x OR y", "NOT x", "  blanks  ", "\"quoted\"", "'", "a=b]", ";c",
                     "tab\t", "Größe",   "邮件", "😀",      "500",   "a*b",        "NA",         "",  " "};

std::string trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

Texts conditionsOf(const std::string& where) {
  if (where == "Attachment") return {"IsPresent"};
  return where == "Size" ? Texts{"Equals", "GreaterThan", "LessThan"} : Texts{"Contains", "Equals"};
}

struct Set {
  RuleSetHead head;
  std::vector<WorkingRule> rules;

  /// All that the page and the file know of it.
  static Texts valuesOf(const RuleSetHead& head, std::span<const WorkingRule> rules) {
    Texts all = {std::to_string(head.Show), std::to_string(head.ShowNew), std::to_string(head.Time)};
    for (const WorkingRule& rule : rules) {
      all.insert(all.end(), {rule.Name, rule.Account, std::to_string(rule.Enabled), std::to_string(rule.Action)});
      all.insert(all.end(), rule.Description.begin() + 1, rule.Description.begin() + 1 + rule.DescCount);
    }
    return all;
  }
  Texts values() const { return valuesOf(head, rules); }
};

/// Does the same to the page and to a plain model of it, each step first to the model.
class RulesPageModel : public test::RandomSteps {
 protected:
  void SetUp() override {
    for (const auto* name : {"Work", "Home"}) addAccount(name).messages = {test::message("bob")};
    start();
    page.tbrMainButtons["Rules"].click();
  }

  WorkingRule& current() { return working_.rules[current_ - 1]; }
  std::string& slot(int number) { return current().Description.at(static_cast<std::size_t>(number)); }
  EntryParts& part(int number) { return parts_.at(static_cast<std::size_t>(number)); }
  std::string joined() {
    std::string all;
    for (int i = 1; i <= current().DescCount; ++i) all += slot(i);
    return all;
  }
  bool dirty() const { return working_.values() != live_.values(); }
  const std::string& oneOf(const Texts& list) { return list[random(list.size())]; }
  bool some() const { return current_ > 0; }
  Answer expectDialog(const std::string& title, Answer answer = Answer::Ok) {
    dialogs_.push_back(title);
    platform.answers.push_back(answer);
    return answer;
  }

  // The builder.
  void showCriteria() { update_ = in_.Where == "Attachment" || !trimmed(in_.Criteria).empty(); }
  void putBack() {
    const std::string boolean = in_.Boolean;
    in_ = part(current().DescCount);
    if (in_.Boolean.empty()) in_.Boolean = boolean;
    showCriteria();
  }
  static EntryParts parsed(const std::string& text) {
    EntryParts entry;
    std::size_t s = 0;
    const auto word = [&] {
      const auto p = text.find(' ', s);
      return text.substr(std::exchange(s, p + 1), p - s);
    };
    if (text.starts_with("AND ") || text.starts_with("OR ")) entry.Boolean = word();
    entry.Where = word();
    entry.Condition = word();
    if (text.substr(s).starts_with("NOT ")) entry.Not = word();
    entry.Criteria = trimmed(text.substr(s));
    return entry;
  }
  void showRule() {
    in_ = {"From", "Contains", "", "AND", ""};
    update_ = redo_ = false;
    if (!some()) return;
    current().RedoCount = current().DescCount;
    for (int i = 1; i <= current().DescCount; ++i) part(i) = parsed(slot(i));
    if (current().DescCount > 0) putBack();
  }
  void rewrite() {
    const std::string to = in_.Boolean, from = to == "AND" ? "OR" : "AND";
    for (int i = 1; i <= current().DescCount; ++i)
      for (auto at = slot(i).find(from); at != std::string::npos; at = slot(i).find(from, at + to.size()))
        slot(i).replace(at, from.size(), to);
  }
  void chooseWhere() {
    if (!some()) return;
    in_.Where = oneOf(wheres);
    const Texts conditions = conditionsOf(in_.Where);
    if (std::count(conditions.begin(), conditions.end(), in_.Condition) == 0) in_.Condition = conditions[0];
    if (in_.Where == "Attachment") in_.Criteria = "";
    showCriteria();
    page.cboWhere.Choose(in_.Where);
    if (in_.Where != "Attachment") page.cboCondition.Choose(in_.Condition = oneOf(conditions));
  }
  void typeCriteria() {
    if (!some() || in_.Where == "Attachment") return;
    page.txtCriteria.Text = in_.Criteria = oneOf(texts);
    showCriteria();
    in_.Not = oneIn(4) ? "NOT" : "";
    page.chkNot.Value = std::int16_t{!in_.Not.empty()};
  }
  void chooseBoolean() {
    if (!some() || current().DescCount == 0) return;
    in_.Boolean = oneIn(2) ? "AND" : "OR";
    rewrite();
    page.cboBoolean.Choose(in_.Boolean);
  }
  void modelUpdate() {
    if (current().DescCount == 10) return void(expectDialog("Velmora - Maximum Entries"));
    EntryParts entry = in_;
    entry.Criteria = trimmed(in_.Criteria);
    part(++current().DescCount) = entry;
    current().RedoCount = std::max(current().RedoCount, current().DescCount);
    if (current().DescCount == current().RedoCount) redo_ = false;
    slot(current().DescCount) = (current().DescCount > 1 ? entry.Boolean + " " : "") + entry.Where + " " +
                                entry.Condition + (entry.Not.empty() ? " " : " NOT ") + entry.Criteria + " ";
    rewrite();
  }
  void build() {
    chooseWhere();
    typeCriteria();
    if (some() && update_) modelUpdate();
    page.tbrRuleUpdate[0]["Update"].click();
  }
  void clear() {
    if (some() && current().DescCount > 0) {
      current().DescCount = current().RedoCount = 0;
      showRule();
    }
    page.tbrRuleUpdate[0]["Clear"].click();
  }
  void undo() {
    if (some() && current().DescCount > 0) {
      if (--current().DescCount > 0) putBack();
      redo_ = true;
    }
    page.tbrRuleUpdate[1]["Undo"].click();
  }
  void redo() {
    if (some() && redo_) {
      redo_ = ++current().DescCount != current().RedoCount;
      putBack();
    }
    page.tbrRuleUpdate[1]["Redo"].click();
  }

  // The rules.
  void load() {
    working_ = live_;
    current_ = std::min(std::max<std::size_t>(1, current_), working_.rules.size());
    showRule();
  }
  /// Whether the file was written.
  bool write() {
    if (handEdited_ && expectDialog("Velmora - Rules File Changed", oneIn(2) ? Answer::Yes : Answer::No) == Answer::No)
      return false;
    if (!platform.canWriteFiles) expectDialog("Velmora - Settings Error");
    if (!platform.canWriteFiles) return false;
    live_ = working_;
    handEdited_ = false;
    return true;
  }
  void add() {
    current_ = working_.rules.size() + 1;
    working_.rules.emplace_back().Name = "Rule" + std::to_string(current_);
    showRule();
    page.tbrRules["RulesAdd"].click();
  }
  void remove() {
    const Answer answer = oneIn(3) ? Answer::No : Answer::Yes;
    if (some() && expectDialog("Delete Rule - Proceed With Caution", answer) == Answer::Yes) {
      working_.rules.erase(working_.rules.begin() + static_cast<long>(current_ - 1));
      current_ = std::min(current_, working_.rules.size());
      write() ? load() : showRule();
    }
    page.tbrRules["RulesDelete"].click();
  }
  void move() {
    const bool up = oneIn(2);
    if (some() && current_ != (up ? 1 : working_.rules.size())) {
      const std::size_t former = std::exchange(current_, up ? current_ - 1 : current_ + 1);
      std::swap(current(), working_.rules[former - 1]);
      showRule();
    }
    page.tbrMoveRule[up ? "Up" : "Down"].click();
  }
  void choose() {
    if (!some()) return;
    current_ = random(working_.rules.size()) + 1;
    if (oneIn(3)) current().Enabled = current().Enabled == 1 ? 0 : 1;
    showRule();
    page.lstRules.Choose(static_cast<std::int16_t>(current_));
    page.lstRules.Tick(static_cast<std::int16_t>(current_), current().Enabled == 1);
  }
  void change() {
    if (!some()) return;
    page.txtRuleName.Text = current().Name = oneOf(texts);
    page.cboRuleAccount.Choose(current().Account = oneOf(accounts_));
    page.optRuleAction.Choose(current().Action = static_cast<std::int16_t>(random(3) + 1));
    page.chkRuleNotify.Value = working_.head.Show = oneIn(2) ? 1 : 0;
    if (working_.head.Show == 0) return;
    page.chkRuleNotifyNew.Value = working_.head.ShowNew = oneIn(2) ? 1 : 0;
    const std::pair<const char*, int> times[] = {{"", 1}, {"60", 59}, {"0", 0}, {"7", 7}, {"x", working_.head.Time}};
    const auto& [typed, time] = times[random(std::size(times))];
    page.txtRuleNotifyTime.Type(typed);
    working_.head.Time = static_cast<std::int16_t>(time);
  }
  void save() {
    platform.canWriteFiles = !oneIn(6);
    if (dirty()) {
      if (some() && trimmed(current().Name).empty())
        expectDialog("Velmora - Rule Name Error");
      else if (some() && current().DescCount == 0)
        expectDialog("Velmora - Rule Description Error");
      else if (write())
        load();
    }
    page.tbrButtons[saveRulesBar]["SaveRules"].click();
    platform.canWriteFiles = true;
  }
  void cancel() {
    if (dirty()) load();
    page.tbrButtons[cancelRulesBar]["Cancel"].click();
  }

  // What happens beside the page.
  void edit() {
    if (!platform.written.contains(file_)) return;
    platform.written[file_] += "; by hand\n";
    handEdited_ = true;
  }
  void check() {
    page.mnuTrayCheckAll.Click();
    platform.asked.clear();  // of sizes that are none
  }
  /// Gives an account another name, or deletes it.
  void changeAccount() {
    if (dirty()) return;
    page.tbrMainButtons["Accounts"].click();
    const auto account =
        std::find(accounts_.begin(), accounts_.end(), program.accounts[program.accounts.AcntCurrent].AcntName);
    if (oneIn(3) && accounts_.size() > 2) {
      accounts_.erase(account);
      expectDialog("Delete Account - Proceed With Caution", Answer::Yes);
      page.tbrAcnts["AcntDelete"].click();
    } else {
      const std::string former = std::exchange(*account, "Account" + std::to_string(++renamed_));
      bool any = false;
      for (Set* set : {&live_, &working_})
        for (WorkingRule& rule : set->rules)
          if (rule.Account == former) any = !(rule.Account = *account).empty();
      if (any) write();
      page.txtAcntName.Text = *account;
      page.tbrButtons[saveAccountBar]["SaveAccount"].click();
    }
    load();
    page.tbrMainButtons["Rules"].click();
  }
  /// What another run of the program shows is what this one has saved.
  void restart() {
    if (handEdited_ || live_.rules.empty()) return;
    Program again(platform);
    Main(again);
    MainWindow& shown = again.frmMain;
    shown.tbrMainButtons["Rules"].click();
    Set found{{0, shown.chkRuleNotify.Value, shown.chkRuleNotifyNew.Value, shown.txtRuleNotifyTime.Value}, {}},
        kept = live_;
    for (WorkingRule& rule : kept.rules) {
      std::string all;
      for (int i = 1; i <= rule.DescCount; ++i) all += trimmed(rule.Description.at(static_cast<std::size_t>(i))) + " ";
      rule.Description[1] = all;
      found.rules.emplace_back();
      shown.lstRules.Choose(static_cast<std::int16_t>(found.rules.size()));
      static_cast<Rule&>(found.rules.back()) = {shown.txtRuleName.Text,
                                                std::int16_t{shown.fraRule.Caption.get() == "Rule: Enabled"},
                                                shown.cboRuleAccount.Text,
                                                shown.optRuleAction.Value,
                                                1,
                                                {"", shown.txtRuleDescription.Text}};
      rule.DescCount = 1;
    }
    EXPECT_EQ(found.values(), kept.values());
  }

  void compareAll() override {
    EXPECT_EQ(titles(), dialogs_);
    const auto& live = program.rules.live;
    std::vector<WorkingRule> liveRules;
    for (const Rule& rule : live.rules()) liveRules.push_back({rule, 0});
    EXPECT_EQ(Set::valuesOf(live, liveRules), live_.values());
    EXPECT_EQ(Set::valuesOf(program.rules.working, program.rules.working.rules()), working_.values());
    EXPECT_EQ(page.cboRuleAccount.List.get(), accounts_);
    std::vector<CheckList::Item> items;
    for (const WorkingRule& rule : working_.rules) items.push_back({rule.Name, rule.Enabled == 1});
    EXPECT_EQ(page.lstRules.Items(), items);
    EXPECT_EQ((Texts{page.cboWhere.Text, page.cboCondition.Text, page.txtCriteria.Text, page.cboBoolean.Text}),
              (Texts{in_.Where, in_.Condition, in_.Criteria, in_.Boolean}));
    EXPECT_EQ(page.cboCondition.List.get(), conditionsOf(in_.Where));
    WorkingRule none;
    none.Name = "";
    none.Action = 0;
    const WorkingRule& shown = some() ? current() : none;
    const std::string caption = shown.Enabled == 1 ? "Rule: Enabled" : "Rule: Not Enabled";
    EXPECT_EQ((Texts{page.fraRule.Caption, page.txtRuleName.Text, page.cboRuleAccount.Text,
                     page.txtRuleDescription.Text, page.lblRuleDescEntries.Caption}),
              (Texts{some() ? caption : "Rule: None", shown.Name, shown.Account, some() ? joined() : "",
                     std::to_string(shown.DescCount) + " of 10 Entries"}));
    const RuleSetHead head = some() ? working_.head : RuleSetHead();
    EXPECT_EQ((std::vector<int>{page.lstRules.ListIndex, page.optRuleAction.Value, page.chkNot.Value,
                                page.chkRuleNotify.Value, page.chkRuleNotifyNew.Value, page.txtRuleNotifyTime.Value}),
              (std::vector<int>{static_cast<int>(current_), shown.Action, !in_.Not.empty(), head.Show, head.ShowNew,
                                head.Time}));
    const bool up = current_ > 1, down = some() && current_<working_.rules.size(), entries = shown.DescCount> 0;
    EXPECT_EQ((std::vector<bool>{
                  page.fraRules.Enabled, page.tbrRules["RulesDelete"].Enabled, page.tbrRuleUpdate[0]["Update"].Enabled,
                  page.tbrRuleUpdate[0]["Clear"].Enabled, page.tbrRuleUpdate[1]["Undo"].Enabled,
                  page.tbrRuleUpdate[1]["Redo"].Enabled, page.cboBoolean.Enabled, page.tbrMoveRule["Up"].Enabled,
                  page.tbrMoveRule["Down"].Enabled, page.txtCriteria.Enabled, page.txtRuleNotifyTime.Enabled,
                  page.chkRuleNotifyNew.Enabled, page.tbrButtons[saveRulesBar].Enabled,
                  page.tbrButtons[cancelRulesBar].Enabled, !page.tbrMainButtons.Enabled}),
              (std::vector<bool>{some(), some(), some() && update_, entries, entries, redo_, entries, up, down,
                                 some() && in_.Where != "Attachment", working_.head.Show == 1, working_.head.Show == 1,
                                 dirty(), dirty(), dirty()}));
  }
  void forgetStep() override {
    dialogs_.clear();
    platform.asked.clear();
    platform.answers.clear();
  }

  void run() {
    using Self = RulesPageModel;
    take<Self>(400, {{3, &Self::add},
                     {1, &Self::remove},
                     {3, &Self::move},
                     {6, &Self::choose},
                     {4, &Self::change},
                     {2, &Self::chooseWhere},
                     {2, &Self::typeCriteria},
                     {2, &Self::chooseBoolean},
                     {12, &Self::build},
                     {4, &Self::undo},
                     {4, &Self::redo},
                     {1, &Self::clear},
                     {6, &Self::save},
                     {2, &Self::cancel},
                     {1, &Self::edit},
                     {2, &Self::check},
                     {2, &Self::changeAccount},
                     {3, &Self::restart}});
  }

  MainWindow& page = program.frmMain;
  std::string file_ = "/home/Rules.ini";
  Set live_, working_;
  std::size_t current_ = 0;
  EntryParts in_{"From", "Contains", "", "AND", ""};  ///< the builder
  std::array<EntryParts, 11> parts_;
  bool update_ = false, redo_ = false, handEdited_ = false;
  int renamed_ = 0;
  Texts accounts_{"All Accounts", "Work", "Home"}, dialogs_;
};

TEST_P(RulesPageModel, IsFollowedAtEveryStep) { run(); }

INSTANTIATE_TEST_SUITE_P(Seeds, RulesPageModel, testing::Range(1U, 17U));

}  // namespace
}  // namespace velmora
