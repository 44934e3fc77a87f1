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

struct Entry {
  std::string text, where, condition, criteria, boolean, negation;
};

struct PlainRule {
  std::string name = "Rule", account = "All Accounts";
  int enabled = 1, action = 2;
  std::array<std::string, 11> slots{};
  std::size_t count = 0, redo = 0;

  std::string joined() const {
    std::string all;
    for (std::size_t i = 1; i <= count; ++i) all += slots.at(i);
    return all;
  }
  /// What the page and the file know of it.
  Texts values() const {
    return {name, account, std::to_string(enabled), std::to_string(action), std::to_string(count), joined()};
  }
};

struct PlainSet {
  std::vector<PlainRule> rules;
  int show = 0, showNew = 0, time = 30;

  std::vector<Texts> values() const {
    std::vector<Texts> all = {{std::to_string(show), std::to_string(showNew), std::to_string(time)}};
    for (const PlainRule& rule : rules) all.push_back(rule.values());
    return all;
  }
};

/// Does the same to the page and to a plain model of it, each step first to the model.
class RulesPageModel : public test::RandomSteps {
 protected:
  void SetUp() override {
    for (const auto* name : {"Work", "Home"}) addAccount(name).messages = {test::message("bob")};
    accounts_ = {"Work", "Home"};
    start();
    program.frmMain.tbrMainButtons["Rules"].click();
  }

  PlainRule& current() { return working_.rules[current_ - 1]; }
  bool dirty() const { return working_.values() != live_.values(); }
  const std::string& oneOf(const Texts& list) { return list[random(list.size())]; }
  void expectDialog(const std::string& title, Answer answer = Answer::Ok) {
    dialogs_.push_back(title);
    platform.answers.push_back(answer);
  }

  // The builder.
  void fillCondition() {
    const Texts conditions = conditionsOf(in_.where);
    if (std::count(conditions.begin(), conditions.end(), in_.condition) == 0) in_.condition = conditions[0];
    if (in_.where == "Attachment") in_.criteria = "";
  }
  void showCriteria() { update_ = in_.where == "Attachment" || !trimmed(in_.criteria).empty(); }
  void putBack() {
    const std::string boolean = in_.boolean;
    in_ = parts_.at(current().count);
    if (in_.boolean.empty()) in_.boolean = boolean;
    showCriteria();
  }
  Entry parsed(const std::string& text) {
    Entry entry{text, "", "", "", "", ""};
    std::size_t s = 0;
    const auto word = [&] {
      const auto p = text.find(' ', s);
      const std::string taken = text.substr(s, p - s);
      s = p + 1;
      return taken;
    };
    if (text.starts_with("AND ") || text.starts_with("OR ")) entry.boolean = word();
    entry.where = word();
    entry.condition = word();
    if (text.substr(s).starts_with("NOT ")) entry.negation = word();
    if (s < text.size()) entry.criteria = trimmed(text.substr(s));
    return entry;
  }
  void showRule() {
    in_ = {"", "From", "Contains", "", "AND", ""};
    update_ = redo_ = false;
    if (current_ == 0) return;
    current().redo = current().count;
    for (std::size_t i = 1; i <= current().count; ++i) parts_.at(i) = parsed(current().slots.at(i));
    if (current().count > 0) putBack();
  }
  void rewrite() {
    const bool isAnd = in_.boolean == "AND";
    const std::string from = isAnd ? "OR" : "AND", to = isAnd ? "AND" : "OR";
    for (std::size_t i = 1; i <= current().count; ++i) {
      std::string& slot = current().slots.at(i);
      for (auto at = slot.find(from); at != std::string::npos; at = slot.find(from, at + to.size()))
        slot.replace(at, from.size(), to);
    }
  }

  void chooseWhere() {
    if (current_ == 0) return;
    in_.where = oneOf(wheres);
    fillCondition();
    showCriteria();
    program.frmMain.cboWhere.Choose(in_.where);
    if (in_.where != "Attachment") program.frmMain.cboCondition.Choose(in_.condition = oneOf(conditionsOf(in_.where)));
  }
  void typeCriteria() {
    if (current_ == 0 || in_.where == "Attachment") return;
    in_.criteria = oneOf(texts);
    showCriteria();
    program.frmMain.txtCriteria.Text = in_.criteria;
    in_.negation = oneIn(4) ? "NOT" : "";
    program.frmMain.chkNot.Value = std::int16_t{!in_.negation.empty()};
  }
  void chooseBoolean() {
    if (current_ == 0 || current().count == 0) return;
    in_.boolean = oneIn(2) ? "AND" : "OR";
    rewrite();
    program.frmMain.cboBoolean.Choose(in_.boolean);
  }
  void update() {
    if (current_ > 0 && update_) {
      if (current().count == 10) {
        expectDialog("Velmora - Maximum Entries");
      } else {
        Entry entry = in_;
        entry.criteria = trimmed(in_.criteria);
        entry.text = current().count > 0 ? entry.boolean + " " : "";
        entry.text +=
            entry.where + " " + entry.condition + (entry.negation.empty() ? " " : " NOT ") + entry.criteria + " ";
        current().slots.at(++current().count) = entry.text;
        current().redo = std::max(current().redo, current().count);
        if (current().count == current().redo) redo_ = false;
        parts_.at(current().count) = entry;
        rewrite();
      }
    }
    program.frmMain.tbrRuleUpdate[0]["Update"].click();
  }
  void build() {
    chooseWhere();
    typeCriteria();
    update();
  }
  void clear() {
    if (current_ > 0 && current().count > 0) {
      current().slots.fill("");
      current().count = current().redo = 0;
      showRule();
    }
    program.frmMain.tbrRuleUpdate[0]["Clear"].click();
  }
  void undo() {
    if (current_ > 0 && current().count > 0) {
      if (--current().count > 0) putBack();
      redo_ = true;
    }
    program.frmMain.tbrRuleUpdate[1]["Undo"].click();
  }
  void redo() {
    if (current_ > 0 && redo_) {
      redo_ = ++current().count != current().redo;
      putBack();
    }
    program.frmMain.tbrRuleUpdate[1]["Redo"].click();
  }

  // The rules.
  void load() {
    working_ = live_;
    current_ = std::min(std::max<std::size_t>(1, current_), working_.rules.size());
    showRule();
  }
  /// Whether the file was written.
  bool write() {
    if (handEdited_) {
      const Answer answer = oneIn(2) ? Answer::Yes : Answer::No;
      expectDialog("Velmora - Rules File Changed", answer);
      if (answer == Answer::No) return false;
    }
    if (!platform.canWriteFiles) {
      expectDialog("Velmora - Settings Error");
      return false;
    }
    live_ = working_;
    handEdited_ = false;
    return true;
  }
  void add() {
    current_ = working_.rules.size() + 1;
    working_.rules.emplace_back().name = "Rule" + std::to_string(current_);
    showRule();
    program.frmMain.tbrRules["RulesAdd"].click();
  }
  void remove() {
    if (current_ > 0) {
      const Answer answer = oneIn(3) ? Answer::No : Answer::Yes;
      expectDialog("Delete Rule - Proceed With Caution", answer);
      if (answer == Answer::Yes) {
        working_.rules.erase(working_.rules.begin() + static_cast<long>(current_ - 1));
        current_ = std::min(current_, working_.rules.size());
        write() ? load() : showRule();
      }
    }
    program.frmMain.tbrRules["RulesDelete"].click();
  }
  void move() {
    const bool up = oneIn(2);
    if (current_ > 0 && current_ != (up ? 1 : working_.rules.size())) {
      const std::size_t other = up ? current_ - 1 : current_ + 1;
      std::swap(current(), working_.rules[other - 1]);
      current_ = other;
      showRule();
    }
    program.frmMain.tbrMoveRule[up ? "Up" : "Down"].click();
  }
  void choose() {
    if (current_ == 0) return;
    current_ = random(working_.rules.size()) + 1;
    if (oneIn(3)) current().enabled = 1 - current().enabled;
    showRule();
    program.frmMain.lstRules.Choose(static_cast<std::int16_t>(current_));
    program.frmMain.lstRules.Tick(static_cast<std::int16_t>(current_), current().enabled == 1);
  }
  void change() {
    if (current_ == 0) return;
    MainWindow& page = program.frmMain;
    page.txtRuleName.Text = current().name = oneOf(texts);
    Texts accounts = accounts_;
    accounts.push_back("All Accounts");
    page.cboRuleAccount.Choose(current().account = oneOf(accounts));
    page.optRuleAction.Choose(static_cast<std::int16_t>(current().action = static_cast<int>(random(3)) + 1));
    page.chkRuleNotify.Value = static_cast<std::int16_t>(working_.show = oneIn(2));
    if (working_.show == 1) page.chkRuleNotifyNew.Value = static_cast<std::int16_t>(working_.showNew = oneIn(2));
    const std::pair<const char*, int> times[] = {{"", 1}, {"60", 59}, {"0", 0}, {"7", 7}, {"x", working_.time}};
    const auto& [typed, time] = times[random(std::size(times))];
    if (working_.show == 1) page.txtRuleNotifyTime.Type(typed);
    if (working_.show == 1) working_.time = time;
  }
  void save() {
    platform.canWriteFiles = !oneIn(6);
    if (dirty()) {
      if (current_ > 0 && trimmed(current().name).empty()) {
        expectDialog("Velmora - Rule Name Error");
      } else if (current_ > 0 && current().count == 0) {
        expectDialog("Velmora - Rule Description Error");
      } else if (write()) {
        load();
      }
    }
    program.frmMain.tbrButtons[saveRulesBar]["SaveRules"].click();
    platform.canWriteFiles = true;
  }
  void cancel() {
    if (dirty()) load();
    program.frmMain.tbrButtons[cancelRulesBar]["Cancel"].click();
  }

  // What happens beside the page.
  void edit() {
    if (!platform.written.contains(file)) return;
    platform.written[file] += "; by hand\n";
    handEdited_ = true;
  }
  void check() {
    program.frmMain.mnuTrayCheckAll.Click();
    platform.asked.clear();  // of sizes that are none
  }
  void renameAccount() {
    if (dirty()) return;
    program.frmMain.tbrMainButtons["Accounts"].click();
    const std::string former = program.accounts[program.accounts.AcntCurrent].AcntName;
    const std::string name = "Account" + std::to_string(++renamed_);
    std::replace(accounts_.begin(), accounts_.end(), former, name);
    const auto isFormers = [&](const PlainRule& rule) { return rule.account == former; };
    const bool any = std::any_of(live_.rules.begin(), live_.rules.end(), isFormers);
    for (PlainSet* set : {&live_, &working_})
      for (PlainRule& rule : set->rules)
        if (isFormers(rule)) rule.account = name;
    if (any) write();
    program.frmMain.txtAcntName.Text = name;
    program.frmMain.tbrButtons[saveAccountBar]["SaveAccount"].click();
    enter();
  }
  void deleteAccount() {
    if (dirty() || accounts_.size() < 2) return;
    program.frmMain.tbrMainButtons["Accounts"].click();
    accounts_.erase(
        std::find(accounts_.begin(), accounts_.end(), program.accounts[program.accounts.AcntCurrent].AcntName));
    expectDialog("Delete Account - Proceed With Caution", Answer::Yes);
    program.frmMain.tbrAcnts["AcntDelete"].click();
    enter();
  }
  void enter() {
    load();
    program.frmMain.tbrMainButtons["Rules"].click();
  }

  /// What another run of the program shows is what this one has saved.
  void restart() {
    if (handEdited_) return;
    Program again(platform);
    Main(again);
    again.frmMain.tbrMainButtons["Rules"].click();
    PlainSet shown{{},
                   again.frmMain.chkRuleNotify.Value,
                   again.frmMain.chkRuleNotifyNew.Value,
                   again.frmMain.txtRuleNotifyTime.Value};
    for (std::size_t i = 1; i <= again.frmMain.lstRules.Items().size(); ++i) {
      again.frmMain.lstRules.Choose(static_cast<std::int16_t>(i));
      PlainRule& rule = shown.rules.emplace_back();
      rule = {again.frmMain.txtRuleName.Text,
              again.frmMain.cboRuleAccount.Text,
              again.frmMain.fraRule.Caption.get() == "Rule: Enabled",
              again.frmMain.optRuleAction.Value,
              {}};
      rule.count = live_.rules.at(i - 1).count;
      rule.slots[1] = again.frmMain.txtRuleDescription.Text;
    }
    PlainSet kept = live_;
    for (PlainRule& rule : kept.rules)
      for (std::size_t i = 1; i <= rule.count; ++i) rule.slots.at(i) = trimmed(rule.slots.at(i)) + " ";
    if (kept.rules.empty()) return;
    EXPECT_EQ(shown.values(), kept.values());
  }

  template <class Row>
  static std::vector<Texts> valuesOf(const RuleSet<Row>& set) {
    std::vector<Texts> all = {{std::to_string(set.Show), std::to_string(set.ShowNew), std::to_string(set.Time)}};
    for (const Rule& rule : set.rules())
      all.push_back({rule.Name, rule.Account, std::to_string(rule.Enabled), std::to_string(rule.Action),
                     std::to_string(rule.DescCount), rule.Description[0]});
    return all;
  }

  void comparePage() {
    MainWindow& page = program.frmMain;
    std::vector<CheckList::Item> items;
    for (const PlainRule& rule : working_.rules) items.push_back({rule.name, rule.enabled == 1});
    EXPECT_EQ(page.lstRules.Items(), items);
    EXPECT_EQ(page.lstRules.ListIndex.get(), static_cast<int>(current_));
    EXPECT_EQ((Texts{page.cboWhere.Text, page.cboCondition.Text, page.txtCriteria.Text, page.cboBoolean.Text}),
              (Texts{in_.where, in_.condition, in_.criteria, in_.boolean}));
    EXPECT_EQ(page.cboCondition.List.get(), conditionsOf(in_.where));
    EXPECT_EQ(page.chkNot.Value.get(), !in_.negation.empty());
    const PlainRule none;
    const PlainRule& shown = current_ > 0 ? current() : none;
    EXPECT_EQ((Texts{page.fraRule.Caption, page.txtRuleName.Text, page.cboRuleAccount.Text,
                     page.txtRuleDescription.Text, page.lblRuleDescEntries.Caption}),
              (Texts{current_ == 0        ? "Rule: None"
                     : shown.enabled == 1 ? "Rule: Enabled"
                                          : "Rule: Not Enabled",
                     current_ == 0 ? "" : shown.name, shown.account, shown.joined(),
                     std::to_string(shown.count) + " of 10 Entries"}));
    EXPECT_EQ(page.optRuleAction.Value.get(), current_ > 0 ? shown.action : 0);
    const bool shows = current_ > 0 && working_.show == 1, entries = shown.count > 0;
    EXPECT_EQ(page.chkRuleNotify.Value.get(), shows);
    EXPECT_EQ((std::vector<int>{page.chkRuleNotifyNew.Value, page.txtRuleNotifyTime.Value}),
              (std::vector<int>{current_ > 0 ? working_.showNew : 0, current_ > 0 ? working_.time : 30}));
    EXPECT_THAT((std::vector<bool>{page.tbrRuleUpdate[0]["Clear"].Enabled, page.tbrRuleUpdate[1]["Undo"].Enabled,
                                   page.cboBoolean.Enabled}),
                testing::Each(entries));
    EXPECT_THAT(
        (std::vector<bool>{page.fraRules.Enabled, page.tbrRules["RulesDelete"].Enabled, !page.lblNoRules.Visible}),
        testing::Each(current_ > 0));
    EXPECT_THAT((std::vector<bool>{program.unsaved.RulesDirty, page.tbrButtons[saveRulesBar].Enabled,
                                   page.tbrButtons[cancelRulesBar].Enabled, !page.tbrMainButtons.Enabled}),
                testing::Each(dirty()));
    EXPECT_EQ(page.tbrRuleUpdate[0]["Update"].Enabled.get(), current_ > 0 && update_);
    EXPECT_EQ(page.tbrRuleUpdate[1]["Redo"].Enabled.get(), redo_);
    EXPECT_EQ(page.tbrMoveRule["Up"].Enabled.get(), current_ > 1);
    EXPECT_EQ(page.tbrMoveRule["Down"].Enabled.get(), current_ > 0 && current_ < working_.rules.size());
    EXPECT_EQ(page.txtRuleNotifyTime.Enabled.get() && page.chkRuleNotifyNew.Enabled, working_.show == 1);
    EXPECT_EQ(page.txtCriteria.Enabled.get(), current_ > 0 && in_.where != "Attachment");
  }

  void compareAll() override {
    EXPECT_EQ(titles(), dialogs_);
    EXPECT_EQ(valuesOf(program.rules.working), working_.values());
    EXPECT_EQ(valuesOf(program.rules.live), live_.values());
    Texts accounts = accounts_;
    accounts.insert(accounts.begin(), "All Accounts");
    EXPECT_EQ(program.frmMain.cboRuleAccount.List.get(), accounts);
    comparePage();
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
                     {1, &Self::renameAccount},
                     {1, &Self::deleteAccount},
                     {3, &Self::restart}});
  }

  std::string file = "/home/Rules.ini";
  PlainSet live_, working_;
  std::size_t current_ = 0;
  Entry in_{"", "From", "Contains", "", "AND", ""};  ///< the builder
  std::array<Entry, 11> parts_;
  bool update_ = false, redo_ = false, handEdited_ = false;
  int renamed_ = 0;
  Texts accounts_, dialogs_;
};

TEST_P(RulesPageModel, IsFollowedAtEveryStep) { run(); }

INSTANTIATE_TEST_SUITE_P(Seeds, RulesPageModel, testing::Range(1U, 9U));

}  // namespace
}  // namespace velmora
