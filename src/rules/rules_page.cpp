#include "rules/rules_page.h"

#include "app/interface_state.h"
#include "app/program.h"
#include "platform/set_for_now.h"
#include "rules/build_rule.h"
#include "rules/edit_rules.h"
#include "rules/import_rules.h"
#include "rules/rename_rules.h"
#include "rules/rule_fits.h"

namespace velmora {

namespace {

constexpr std::int32_t darkRed = 192;

WorkingRule& current(Program& program) { return program.rules.working[program.rules.CurrentRule]; }

CheckList::Item itemOf(const WorkingRule& rule) { return {rule.Name, rule.Enabled == 1}; }

void fillList(Program& program) {
  std::vector<CheckList::Item> items;
  for (const WorkingRule& rule : program.rules.working.rules()) items.push_back(itemOf(rule));
  program.frmMain.lstRules.SetItems(std::move(items));
}

void ShowRuleEnabled(RulesPage& page, bool enabled) {
  page.fraRule.Caption = enabled ? "Rule: Enabled" : "Rule: Not Enabled";
  const std::int32_t colour = enabled ? ordinaryColour : darkRed;
  page.fraRule.ForeColour = colour;
  page.fraAction.ForeColour = colour;
  page.lblRuleDescription.ForeColour = colour;
}

void showNotification(Program& program) {
  RulesPage& page = program.frmMain;
  const RuleSetHead& set = program.rules.working;
  page.chkRuleNotify.Value = set.Show;
  page.chkRuleNotifyNew.Value = set.ShowNew;
  page.txtRuleNotifyTime.Value = set.Time;
}

void ClearRulePage(Program& program) {
  RulesPage& page = program.frmMain;
  page.lstRules.SetItems({});
  page.lstRules.ListIndex = std::int16_t{0};
  ShowRuleEnabled(page, true);
  page.fraRule.Caption = "Rule: None";
  page.txtRuleName.Text = page.txtRuleDescription.Text = "";
  page.cboRuleAccount.Text = std::string(allAccounts);
  page.optRuleAction.Value = std::int16_t{0};
  page.lblRuleDescEntries.Caption = "0 of 10 Entries";
  page.chkRuleNotify.Value = page.chkRuleNotifyNew.Value = std::int16_t{0};
  page.txtRuleNotifyTime.Value = std::int16_t{30};
  ClearBuilder(program);
  page.lblCriteriaNotice.Caption = "";
}

/// The page has a rule, and the user has changed something of it. A screen reader can write where nobody else can: that
/// is taken back.
bool isUsersChange(Program& program) {
  if (program.rulePage.RuleLoading) return false;
  if (program.rules.CurrentRule > 0 && program.frmMain.fraRules.Enabled && !program.rulePage.asking) return true;
  ShowRules(program);
  return false;
}

void lstRules_Click(Program& program) {
  if (program.frmMain.lstRules.ListIndex < 1 || !isUsersChange(program)) return;
  program.rules.CurrentRule = program.frmMain.lstRules.ListIndex;
  ShowRule(program, program.rules.CurrentRule);
  CheckRulesDirty(program);
}

void lstRules_ItemCheck(Program& program, std::int16_t item) {
  if (!isUsersChange(program)) return;
  program.rules.CurrentRule = item;
  current(program).Enabled = program.frmMain.lstRules[item].Checked ? 1 : 0;
  ShowRule(program, item);
  CheckRulesDirty(program);
}

void txtRuleName_Change(Program& program) {
  if (!isUsersChange(program)) return;
  current(program).Name = program.frmMain.txtRuleName.Text;
  program.frmMain.lstRules.SetItem(program.rules.CurrentRule, itemOf(current(program)));
  CheckRulesDirty(program);
}

void cboRuleAccount_Click(Program& program) {
  if (!isUsersChange(program)) return;
  current(program).Account = program.frmMain.cboRuleAccount.Text;
  CheckRulesDirty(program);
}

void optRuleAction_Click(Program& program) {
  if (!isUsersChange(program)) return;
  current(program).Action = program.frmMain.optRuleAction.Value;
  CheckRulesDirty(program);
}

void takeNotification(Program& program, std::int16_t RuleSetHead::*member, std::int16_t value) {
  if (!isUsersChange(program)) return;
  program.rules.working.head().*member = value;
  CheckRulesDirty(program);
}

void tbrRules_ButtonClick(Program& program, const Button& button) {
  if (program.rulePage.asking || program.frmRuleFile.RuleFileOpen) return;
  if (button.Key == "RulesAdd") AddRule(program);
  if (button.Key == "RulesDelete") DeleteRule(program);
  if (button.Key == "RulesImport") ImportRules(program);
  if (button.Key == "RulesRename") RenameRuleFile(program);
}

void tbrMoveRule_ButtonClick(Program& program, const Button& button) {
  if (!program.rulePage.asking) MoveRule(program, button.Key == "Up");
}

void connectNotification(Program& program) {
  RulesPage& page = program.frmMain;
  const auto take = [&program](std::int16_t RuleSetHead::*member) {
    return [&program, member](std::int16_t value) { takeNotification(program, member, value); };
  };
  page.chkRuleNotify.Value.watch(take(&RuleSetHead::Show));
  page.chkRuleNotifyNew.Value.watch(take(&RuleSetHead::ShowNew));
  page.txtRuleNotifyTime.Value.watch(take(&RuleSetHead::Time));
}

}  // namespace

void ConnectRulesPage(Program& program) {
  const SetForNow loading(program.rulePage.RuleLoading, true);
  RulesPage& page = program.frmMain;
  page.tbrRules.ButtonClick = [&program](Button& button) { tbrRules_ButtonClick(program, button); };
  page.tbrMoveRule.ButtonClick = [&program](Button& button) { tbrMoveRule_ButtonClick(program, button); };
  page.lstRules.Click = [&program] { lstRules_Click(program); };
  page.lstRules.ItemCheck = [&program](std::int16_t item) { lstRules_ItemCheck(program, item); };
  page.lstRules.DeleteKey = [&page] { page.tbrRules["RulesDelete"].click(); };
  page.txtRuleName.Text.watch([&program](const std::string&) { txtRuleName_Change(program); });
  page.cboRuleAccount.Click = [&program] { cboRuleAccount_Click(program); };
  page.optRuleAction.Click = [&program] { optRuleAction_Click(program); };
  connectNotification(program);
  ConnectBuilder(program);
  ConnectRuleFits(program);
}

void LoadRulePage(Program& program) {
  Rules& rules = program.rules;
  rules.CopyRulesToWorking();
  if (rules.CurrentRule < 1 && rules.working.RuleCount > 0) rules.CurrentRule = 1;
  ShowRules(program);
}

void ShowRules(Program& program) {
  fillList(program);
  ShowRule(program, program.rules.CurrentRule);
  CheckRulesDirty(program);
}

void ShowRule(Program& program, std::int16_t number) {
  const SetForNow loading(program.rulePage.RuleLoading, true);
  if (number == 0) {
    ClearRulePage(program);
    return;
  }
  RulesPage& page = program.frmMain;
  WorkingRule& rule = program.rules.working[number];
  rule.RedoCount = rule.DescCount;
  page.lstRules.ListIndex = number;
  page.lstRules.SetItem(number, itemOf(rule));
  ShowRuleEnabled(page, rule.Enabled == 1);
  page.txtRuleName.Text = rule.Name;
  page.cboRuleAccount.Text = rule.Account;
  page.optRuleAction.Value = rule.Action;
  showNotification(program);
  ShowEntries(program);
}

void CheckRulesDirty(Program& program) {
  if (program.rulePage.RuleLoading) return;
  const bool unkept = program.rulesFile.behind && program.CurrentPage == rulesPage && !program.rulePage.putOff;
  program.unsaved.RulesDirty = unkept || isChanged(program.rules);
  SetInterfaceState(program);
  CountRuleFits(program);
}

void FillRuleAccounts(Program& program) {
  std::vector<std::string> names = {std::string(allAccounts)};
  for (const std::int16_t number : program.accounts.numbers()) names.push_back(program.accounts[number].AcntName);
  program.frmMain.cboRuleAccount.List = std::move(names);
}

}  // namespace velmora
