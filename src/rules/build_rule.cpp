#include "rules/build_rule.h"

#include "app/program.h"
#include "platform/set_for_now.h"
#include "platform/text.h"
#include "rules/decisions/rule_page_texts.h"
#include "rules/rules_page.h"

namespace velmora {

namespace {

WorkingRule& current(Program& program) { return program.rules.working[program.rules.CurrentRule]; }

/// Blank for a rule without entries.
const EntryParts& lastEntry(Program& program) { return program.rulePage.Entries.at(entryCount(current(program))); }

void showNotice(Program& program) {
  const bool isRule = program.rules.CurrentRule > 0;
  program.frmMain.lblCriteriaNotice.Caption =
      isRule ? criteriaNotice(builtEntry(program), lastEntry(program)) : std::string();
}

void showDescription(Program& program) {
  const WorkingRule& rule = current(program);
  program.frmMain.txtRuleDescription.Text = rule.Description[0];
  program.frmMain.lblRuleDescEntries.Caption = entriesText(rule);
  showNotice(program);
}

void changed(Program& program) {
  showDescription(program);
  CheckRulesDirty(program);
}

/// From the field to the conjunction: each may depend on those before it.
void putBack(Program& program, const EntryParts& parts) {
  const SetForNow loading(program.rulePage.RuleLoading, true);
  RulesPage& page = program.frmMain;
  page.cboWhere.Text = parts.Where;
  FillCondition(program);
  page.cboCondition.Text = parts.Condition;
  page.txtCriteria.Text = parts.Criteria;
  page.chkNot.Value = std::int16_t{!parts.Not.empty()};
  if (!parts.Boolean.empty()) page.cboBoolean.Text = parts.Boolean;
}

void cboWhere_Click(Program& program) {
  FillCondition(program);
  showNotice(program);
  CheckRulesDirty(program);
}

void cboBoolean_Click(Program& program) {
  if (program.rules.CurrentRule < 1 || !program.frmMain.fraRules.Enabled) return;
  rewriteConjunctions(current(program), program.frmMain.cboBoolean.Text.get());
  changed(program);
}

/// Neither the criteria nor the negation is part of the rule before an update.
void builderChanged(Program& program) {
  if (program.rulePage.RuleLoading) return;
  showNotice(program);
  CheckRulesDirty(program);
}

void tbrRuleUpdate_ButtonClick(Program& program, const Button& button) {
  if (program.rulePage.asking) return;
  if (button.Key == "Update") UpdateDescription(program);
  if (button.Key == "Clear") ClearDescription(program);
  if (button.Key == "Undo") UndoDescription(program);
  if (button.Key == "Redo") RedoDescription(program);
}

}  // namespace

void ConnectBuilder(Program& program) {
  RulesPage& page = program.frmMain;
  std::vector<std::string> fields;
  for (const WhereChoice& choice : whereChoices()) fields.emplace_back(choice.where);
  page.cboWhere.List = std::move(fields);
  page.cboWhere.Click = [&program] { cboWhere_Click(program); };
  page.cboCondition.Click = [&program] { builderChanged(program); };
  page.cboBoolean.Click = [&program] { cboBoolean_Click(program); };
  page.chkNot.Value.watch([&program](std::int16_t) { builderChanged(program); });
  page.txtCriteria.Text.watch([&program](const std::string&) { builderChanged(program); });
  page.txtCriteria.Enter = [&page] { page.tbrRuleUpdate[0]["Update"].click(); };
  for (Toolbar& bar : page.tbrRuleUpdate) {
    bar.ButtonClick = [&program](Button& button) { tbrRuleUpdate_ButtonClick(program, button); };
  }
}

EntryParts builtEntry(const Program& program) {
  const RulesPage& page = program.frmMain;
  return {page.cboWhere.Text, page.cboCondition.Text, std::string(text::trim(page.txtCriteria.Text.get())),
          page.cboBoolean.Text, page.chkNot.Value.get() == 1 ? "NOT" : ""};
}

void FillCondition(Program& program) {
  RulesPage& page = program.frmMain;
  const WhereChoice* choice = choiceOf(page.cboWhere.Text.get());
  if (choice == nullptr) {
    page.cboCondition.List = std::vector<std::string>();
    page.cboCondition.Text = page.lblCriteria.Caption = "";
    return;
  }
  page.cboCondition.List = std::vector<std::string>(choice->conditions.begin(), choice->conditions.end());
  page.cboCondition.Text = keptCondition(*choice, page.cboCondition.Text);
  page.lblCriteria.Caption = choice->prompt;
  const SetForNow loading(program.rulePage.RuleLoading, true);
  if (!choice->takesCriteria) page.txtCriteria.Text = "";
}

void ClearBuilder(Program& program) { putBack(program, {"From", "Contains", "", "AND", ""}); }

void ShowEntries(Program& program) {
  const WorkingRule& rule = current(program);
  program.rulePage.Entries = {};
  for (std::size_t slot = 1; slot <= entryCount(rule); ++slot) {
    program.rulePage.Entries.at(slot) = partsOf(rule.Description.at(slot));
  }
  entryCount(rule) > 0 ? putBack(program, lastEntry(program)) : ClearBuilder(program);
  showDescription(program);
}

void UpdateDescription(Program& program) {
  WorkingRule& rule = current(program);
  if (entryCount(rule) == mostEntries) {
    program.platform.MsgBox(maximumEntries(program.AppTitle));
    return;
  }
  const EntryParts parts = builtEntry(program);
  addEntry(rule, parts);
  program.rulePage.Entries.at(entryCount(rule)) = parts;
  changed(program);
}

void ClearDescription(Program& program) {
  clearEntries(current(program));
  putBack(program, {"From", "Contains", "", "AND", builtEntry(program).Not});
  changed(program);
}

void UndoDescription(Program& program) {
  WorkingRule& rule = current(program);
  undoEntry(rule);
  if (entryCount(rule) > 0) putBack(program, lastEntry(program));
  changed(program);
}

void RedoDescription(Program& program) {
  redoEntry(current(program));
  putBack(program, lastEntry(program));
  changed(program);
}

}  // namespace velmora
