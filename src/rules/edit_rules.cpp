#include "rules/edit_rules.h"

#include "app/program.h"
#include "platform/set_for_now.h"
#include "platform/text.h"
#include "rules/decisions/rule_page_texts.h"
#include "rules/rules_page.h"
#include "rules/save_rules.h"

namespace velmora {

namespace {

const WorkingRule& current(Program& program) { return program.rules.working[program.rules.CurrentRule]; }

bool write(Program& program) {
  return WriteRules(program, program.platform.programFile(program.options.RulesIniFileName));
}

bool refuse(Program& program, const Question& refusal, const TextBox& box) {
  program.platform.MsgBox(refusal);
  box.SetFocus();
  return false;
}

/// Only the rule showing is looked at: another one without entries fits no message, and does no harm.
bool canBeSaved(Program& program) {
  if (program.rules.CurrentRule < 1) return true;
  const WorkingRule& rule = current(program);
  RulesPage& page = program.frmMain;
  if (text::trim(rule.Name).empty()) return refuse(program, blankRuleName(program.AppTitle), page.txtRuleName);
  if (rule.DescCount < 1) return refuse(program, blankDescription(program.AppTitle), page.txtCriteria);
  return true;
}

}  // namespace

void AddRule(Program& program) {
  addRule(program.rules);
  ShowRules(program);
  program.frmMain.txtRuleName.SetFocus();
}

void DeleteRule(Program& program) {
  const SetForNow asking(program.rulePage.asking, true);
  if (program.platform.MsgBox(deleteRuleWarning(current(program).Name)) != Answer::Yes) return;
  deleteRule(program.rules);
  write(program) ? LoadRulePage(program) : ShowRules(program);
}

void MoveRule(Program& program, bool up) {
  moveRule(program.rules, up);
  ShowRules(program);
}

void SaveRules(Program& program) {
  if (canBeSaved(program) && write(program)) LoadRulePage(program);
}

void CancelRules(Program& program) {
  program.rulePage.putOff = true;
  LoadRulePage(program);
}

bool SettleRules(Program& program) {
  if (!program.unsaved.RulesDirty && !program.rulesFile.behind) return true;
  if (program.rulePage.asking) return false;
  const SetForNow asking(program.rulePage.asking, true);
  const Answer answer = program.platform.MsgBox(rulesNotSaved());
  if (answer == Answer::Yes) SaveRules(program);
  if (answer == Answer::Cancel) {
    program.rulesFile.behind = false;
    LoadRulePage(program);
  }
  return !program.unsaved.RulesDirty && !program.rulesFile.behind;
}

}  // namespace velmora
