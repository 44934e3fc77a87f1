#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

#include "checking/check_cycle.h"
#include "rules/decisions/rule_builder.h"
#include "support/random_steps.h"

namespace velmora {
namespace {

using Texts = std::vector<std::string>;

const Texts wheres = {"From", "To", "Subject", "Body", "Attachment", "Size"};
const Texts texts = {"bob",   "FLORIDA", "AND",  "x OR y", "NOT x", "  blanks  ", "\"quoted\"", "'", "a=b]", ";c",
                     "tab\t", "Größe",   "邮件", "😀",      "500",   "a*b",        "NA",         "",  " "};
const std::pair<std::string, std::string> files[] = {
    {"Rules", "/home/Rules.ini"}, {"Bob", "/home/RulesBob.ini"}, {"MyRules.ini", "/home/RulesMy.ini"}, {"a/b", ""}};
const std::string foreign =
    "[Rules]\nRuleCount=1\nTime=9\n[Rule1]\nName=x\nAccount=Work\nDescCount=1\nDescription1=To Contains y\n";

std::string trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}
Texts conditionsOf(const std::string& where) {
  if (where == "Attachment") return {"IsPresent"};
  return where == "Size" ? Texts{"Equals", "GreaterThan", "LessThan"} : Texts{"Contains", "Equals"};
}
template <class... Values>
std::string line(const Values&... values) {
  std::ostringstream all;
  ((all << values << '|'), ...);
  return all.str();
}
template <class... Values>
std::string shown(const Property<Values>&... values) {
  return line(values.get()...);
}

/// All that the page and the file know of a set.
std::string valuesOf(const RuleSetHead& head, std::span<const WorkingRule> rules) {
  std::string all = line(head.Show, head.ShowNew, head.Time);
  for (const WorkingRule& rule : rules) {
    all += "\n" + line(rule.Name, rule.Account, rule.Enabled, rule.Action);
    for (std::size_t i = 1; i <= entryCount(rule); ++i) all += rule.Description.at(i) + "|";
  }
  return all;
}
struct Set {
  RuleSetHead head;
  std::vector<WorkingRule> rules;
  std::string values() const { return valuesOf(head, rules); }
};

/// Does the same to the page and to a plain model of it, each step first to the model.
class RulesPageModel : public test::RandomSteps {
 protected:
  void SetUp() override {
    for (const auto* name : {"Work", "Home"}) addAccount(name).messages = {test::message("bob")};
    start();
    page.tbrMainButtons["Rules"].click();
  }
  bool some() const { return current_ > 0; }
  bool dirty() const { return (behind_ && !putOff_) || working_.values() != live_.values(); }
  const std::string& oneOf(const Texts& list) { return list[random(list.size())]; }
  bool expectDialog(const std::string& title, Answer answer = Answer::Ok) {
    dialogs_.push_back(title);
    platform.answers.push_back(answer);
    return answer == Answer::Yes;
  }
  bool asks(const std::string& title) { return expectDialog(title, oneIn(3) ? Answer::No : Answer::Yes); }
  std::int16_t number() const { return static_cast<std::int16_t>(current_); }
  WorkingRule& current() { return working_.rules[current_ - 1]; }
  std::string& slot(int entry) { return current().Description.at(static_cast<std::size_t>(entry)); }
  EntryParts& part(int entry) { return parts_.at(static_cast<std::size_t>(entry)); }

  // The builder.
  void showCriteria() { update_ = in_.Where == "Attachment" || !trimmed(in_.Criteria).empty(); }
  void putBack() {
    const std::string boolean = std::exchange(in_, part(current().DescCount)).Boolean;
    if (in_.Boolean.empty()) in_.Boolean = boolean;
    showCriteria();
  }
  static EntryParts parsed(std::string rest) {
    EntryParts entry;
    const auto word = [&rest] {
      const auto blank = rest.find(' ');
      const std::string taken = rest.substr(0, blank);
      rest.erase(0, blank + 1);
      return taken;
    };
    if (rest.starts_with("AND ") || rest.starts_with("OR ")) entry.Boolean = word();
    entry.Where = word();
    entry.Condition = word();
    if (rest.starts_with("NOT ")) entry.Not = word();
    entry.Criteria = trimmed(rest);
    return entry;
  }
  void showRule() {
    update_ = redo_ = false;
    if (!some() || current().DescCount == 0) in_ = {"From", "Contains", "", "AND", ""};
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
  /// Some of what an entry needs, and perhaps the entry.
  void build() {
    if (!some()) return;
    in_.Where = oneOf(wheres);
    const Texts conditions = conditionsOf(in_.Where);
    if (std::ranges::count(conditions, in_.Condition) == 0) in_.Condition = conditions[0];
    if (in_.Where == "Attachment") in_.Criteria = "";
    page.cboWhere.Choose(in_.Where);
    if (oneIn(2)) page.cboCondition.Choose(in_.Condition = oneOf(conditions));
    if (in_.Where != "Attachment" && !oneIn(4)) page.txtCriteria.Text = in_.Criteria = oneOf(texts);
    if (oneIn(3)) page.chkNot.Value = std::int16_t{!(in_.Not = oneIn(2) ? "NOT" : "").empty()};
    showCriteria();
    if (update_ && !oneIn(6)) modelUpdate(), page.tbrRuleUpdate[0]["Update"].click();
    if (!oneIn(6) || current().DescCount == 0) return;
    in_.Boolean = oneIn(2) ? "AND" : "OR";
    rewrite();
    page.cboBoolean.Choose(in_.Boolean);
  }
  void clear() {
    if (some() && current().DescCount > 0) {
      const std::string negation = in_.Not;
      current().DescCount = 0;
      showRule();
      in_.Not = negation;
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
    if (redo_) {
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
  /// Whether the file is written.
  bool write(const std::string& path, const Set& set) {
    if (path == file_ && handEdited_ && !asks("Velmora - Rules File Changed")) return false;
    if (path != file_ && platform.written.contains(path) && !asks("Velmora - Rules File Exists")) return false;
    if (!platform.canWriteFiles) return expectDialog("Velmora - Settings Error");
    live_ = set;
    file_ = path;
    return !(handEdited_ = behind_ = false);
  }
  void add() {
    current_ = working_.rules.size() + 1;
    working_.rules.emplace_back().Name = "Rule" + std::to_string(current_);
    showRule();
    page.tbrRules["RulesAdd"].click();
  }
  void remove() {
    if (some() && asks("Delete Rule - Proceed With Caution")) {
      working_.rules.erase(working_.rules.begin() + number() - 1);
      current_ = std::min(current_, working_.rules.size());
      write(file_, working_) ? load() : showRule();
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
    page.lstRules.Choose(number());
    page.lstRules.Tick(number(), current().Enabled == 1);
  }
  void change() {
    if (!some()) return;
    page.txtRuleName.Text = current().Name = oneOf(texts);
    page.cboRuleAccount.Choose(current().Account = oneOf(accounts_));
    page.optRuleAction.Choose(current().Action = static_cast<std::int16_t>(random(3) + 1));
    page.chkRuleNotify.Value = working_.head.Show = oneIn(2);
    if (working_.head.Show == 0) return;
    page.chkRuleNotifyNew.Value = working_.head.ShowNew = oneIn(2);
    const std::pair<const char*, int> times[] = {{"", 1}, {"60", 59}, {"0", 0}, {"x", working_.head.Time}};
    const auto& [typed, time] = times[random(std::size(times))];
    page.txtRuleNotifyTime.Type(typed);
    working_.head.Time = static_cast<std::int16_t>(time);
  }
  void save() {
    platform.canWriteFiles = !oneIn(6);
    const bool named = some() && trimmed(current().Name).empty();
    if (dirty() && (named || (some() && current().DescCount == 0))) {
      expectDialog(named ? "Velmora - Rule Name Error" : "Velmora - Rule Description Error");
    } else if (dirty() && write(file_, working_)) {
      load();
    }
    page.tbrButtons[saveRulesBar]["SaveRules"].click();
    platform.canWriteFiles = true;
  }
  void cancel() {
    if (dirty()) putOff_ = true, load();
    page.tbrButtons[cancelRulesBar]["Cancel"].click();
  }
  void renameFile() {
    const auto& [given, path] = files[random(std::size(files))];
    if (path.empty() ? expectDialog("Velmora - Rules FileName Error") : write(path, working_)) load();
    page.tbrRules["RulesRename"].click();
    program.frmRuleFile.txtRuleFileName.Text = given;
    for (const auto* key : {"Save", "Cancel"}) program.frmRuleFile.tbrButtons[key].click();
  }
  void import() {
    const std::string path = files[random(std::size(files) - 1)].second;
    Set set{{1, 0, 0, 9}, std::vector<WorkingRule>(1)};
    set.rules[0].Name = "x";
    set.rules[0].DescCount = 1;
    set.rules[0].Description[1] = "To Contains y ";
    platform.chosenFile = "/elsewhere/" + path.substr(6);
    platform.written[*platform.chosenFile] = foreign;
    const bool replaces = path == file_ && platform.written.contains(path);
    if ((!dirty() || asks("Changes Not Saved!")) && (!replaces || asks("Velmora - Rules File Exists")) &&
        write(path, set)) {
      current_ = 1;
      load();
      expectDialog("Velmora - Rule Import Successful");
    }
    page.tbrRules["RulesImport"].click();
  }

  // What happens beside the page.
  void edit() {
    if (!platform.written.contains(file_)) return;
    platform.written[file_] += "; by hand\n";
    handEdited_ = true;
  }
  void check() {
    oneIn(2) ? AutoCheckAccounts(program) : page.mnuTrayCheckAll.Click();
    platform.asked.clear();  // of sizes that are none
  }
  /// Gives an account another name, or deletes it.
  void changeAccount() {
    if (dirty()) return;
    page.tbrMainButtons["Accounts"].click();
    const auto account = std::ranges::find(accounts_, program.accounts[program.accounts.AcntCurrent].AcntName);
    if (oneIn(3) && accounts_.size() > 2) {
      accounts_.erase(account);
      expectDialog("Delete Account - Proceed With Caution", Answer::Yes);
      page.tbrAcnts["AcntDelete"].click();
    } else {
      const std::string former = std::exchange(*account, "Account" + std::to_string(++renamed_));
      for (WorkingRule& rule : working_.rules) rule.Account = rule.Account == former ? *account : rule.Account;
      if (working_.values() != live_.values()) behind_ = true, live_ = working_, write(file_, working_);
      page.txtAcntName.Text = *account;
      page.tbrButtons[saveAccountBar]["SaveAccount"].click();
    }
    putOff_ = false;
    load();
    page.tbrMainButtons["Rules"].click();
  }
  /// What another run of the program shows is what this one has saved.
  void restart() {
    if (handEdited_ || live_.rules.empty()) return;
    Program again(platform);
    Main(again);
    MainWindow& other = again.frmMain;
    other.tbrMainButtons["Rules"].click();
    std::string expected, found;
    for (const WorkingRule& rule : live_.rules) {
      other.lstRules.Choose(static_cast<std::int16_t>(&rule - live_.rules.data() + 1));
      expected += line(rule.Name, rule.Account, rule.Enabled, rule.Action);
      for (std::size_t i = 1; i <= entryCount(rule); ++i) expected += trimmed(rule.Description.at(i)) + " ";
      found += shown(other.txtRuleName.Text, other.cboRuleAccount.Text) +
               line(other.fraRule.Caption.get() == "Rule: Enabled", other.optRuleAction.Value.get()) +
               other.txtRuleDescription.Text.get();
    }
    EXPECT_EQ(found, expected);
  }

  void compareAll() override {
    EXPECT_EQ(titles(), dialogs_);
    std::vector<WorkingRule> live;
    for (const Rule& rule : program.rules.live.rules()) live.push_back({rule, 0});
    EXPECT_EQ(valuesOf(program.rules.live, live), live_.values());
    EXPECT_EQ(valuesOf(program.rules.working, program.rules.working.rules()), working_.values());
    EXPECT_EQ(page.cboRuleAccount.List.get(), accounts_);
    EXPECT_EQ(page.lblRulesFileName.Caption.get(), "FileName: " + file_.substr(6));
    for (const WorkingRule& rule : working_.rules)
      EXPECT_EQ(page.lstRules[static_cast<std::int16_t>(&rule - working_.rules.data() + 1)],
                (CheckList::Item{rule.Name, rule.Enabled == 1}));
    EXPECT_EQ(shown(page.cboWhere.Text, page.cboCondition.Text, page.txtCriteria.Text, page.cboBoolean.Text,
                    page.chkNot.Value, page.lstRules.ListIndex),
              line(in_.Where, in_.Condition, in_.Criteria, in_.Boolean, !in_.Not.empty(), current_));
    EXPECT_EQ(page.cboCondition.List.get(), conditionsOf(in_.Where));
    const RuleSetHead head = some() ? working_.head : RuleSetHead();
    const std::string caption = !some() ? "Rule: None" : current().Enabled == 1 ? "Rule: Enabled" : "Rule: Not Enabled";
    const int entries = some() ? current().DescCount : 0;
    std::string joined;
    for (int i = 1; i <= entries; ++i) joined += slot(i);
    EXPECT_EQ(shown(page.fraRule.Caption, page.txtRuleName.Text, page.cboRuleAccount.Text, page.optRuleAction.Value,
                    page.txtRuleDescription.Text, page.lblRuleDescEntries.Caption, page.chkRuleNotify.Value,
                    page.chkRuleNotifyNew.Value, page.txtRuleNotifyTime.Value),
              line(caption, some() ? current().Name : "", some() ? current().Account : "All Accounts",
                   some() ? current().Action : 0, joined, std::to_string(entries) + " of 10 Entries", head.Show,
                   head.ShowNew, head.Time));
    EXPECT_EQ(
        shown(page.fraRules.Enabled, page.tbrRules["RulesDelete"].Enabled, page.tbrRuleUpdate[0]["Update"].Enabled,
              page.tbrRuleUpdate[0]["Clear"].Enabled, page.tbrRuleUpdate[1]["Undo"].Enabled,
              page.tbrRuleUpdate[1]["Redo"].Enabled, page.cboBoolean.Enabled, page.tbrMoveRule["Up"].Enabled,
              page.tbrMoveRule["Down"].Enabled, page.txtCriteria.Enabled),
        line(some(), some(), update_, entries > 0, entries > 0, redo_, entries > 0, current_ > 1,
             some() && current_ < working_.rules.size(), some() && in_.Where != "Attachment"));
    EXPECT_EQ(
        shown(page.txtRuleNotifyTime.Enabled, page.chkRuleNotifyNew.Enabled, page.tbrButtons[saveRulesBar].Enabled,
              page.tbrButtons[cancelRulesBar].Enabled, page.tbrMainButtons.Enabled),
        line(working_.head.Show == 1, working_.head.Show == 1, dirty(), dirty(), !dirty()));
  }
  void forgetStep() override {
    dialogs_.clear();
    platform.asked.clear();
    platform.answers.clear();
  }

  MainWindow& page = program.frmMain;
  std::string file_ = "/home/Rules.ini";
  Set live_, working_;
  std::size_t current_ = 0;
  EntryParts in_{"From", "Contains", "", "AND", ""};  ///< the builder
  std::array<EntryParts, 11> parts_;
  bool update_ = false, redo_ = false, handEdited_ = false;
  bool putOff_ = false;
  bool behind_ = false;  ///< a rename of an account has not reached the file
  int renamed_ = 0;
  Texts accounts_{"All Accounts", "Work", "Home"}, dialogs_;

  void run() {
    using Self = RulesPageModel;
    take<Self>(400, {{16, &Self::build},
                     {4, &Self::undo},
                     {4, &Self::redo},
                     {1, &Self::clear},
                     {3, &Self::add},
                     {1, &Self::remove},
                     {3, &Self::move},
                     {6, &Self::choose},
                     {4, &Self::change},
                     {6, &Self::save},
                     {2, &Self::cancel},
                     {1, &Self::renameFile},
                     {1, &Self::import},
                     {1, &Self::edit},
                     {2, &Self::check},
                     {2, &Self::changeAccount},
                     {3, &Self::restart}});
  }
};

TEST_P(RulesPageModel, IsFollowedAtEveryStep) { run(); }

INSTANTIATE_TEST_SUITE_P(Seeds, RulesPageModel, testing::Range(1U, 17U));

}  // namespace
}  // namespace velmora
