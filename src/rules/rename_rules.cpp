#include "rules/rename_rules.h"

#include <utility>

#include "app/program.h"
#include "checking/hold_timers.h"
#include "platform/set_for_now.h"
#include "rules/decisions/rule_file_name.h"
#include "rules/decisions/rule_file_texts.h"
#include "rules/keep_rules_as.h"

namespace velmora {

namespace {

constexpr int rulesHelp = 150;

void saveRulesAs(Program& program) {
  const SetForNow asking(program.rulePage.asking, true);
  const TextBox& name = program.frmRuleFile.txtRuleFileName;
  if (KeepRulesAs(program, withIniEnding(rulesPrefixed(name.Text.get())), program.rules)) {
    frmRuleFile_Unload(program);
  } else {
    name.SetFocus();
  }
}

void tbrButtons_ButtonClick(Program& program, const Button& button) {
  if (button.Key == "Save") saveRulesAs(program);
  if (button.Key == "Cancel") frmRuleFile_Unload(program);
}

}  // namespace

void ConnectRuleFile(Program& program) {
  RuleFileWindow& window = program.frmRuleFile;
  window.Caption = program.AppTitle + " - Rename Rules File";
  window.lblRuleFileIntro.Caption = std::string(ruleFileIntro);
  window.tbrButtons.ButtonClick = [&program](Button& button) { tbrButtons_ButtonClick(program, button); };
  window.txtRuleFileName.Enter = [&window] { window.tbrButtons["Save"].click(); };
  window.Activate = [&window] { window.txtRuleFileName.SetFocus(); };
  window.Help = [&program] { program.platform.showHelp(rulesHelp); };
  window.Close = [&program] { frmRuleFile_Unload(program); };
}

void RenameRuleFile(Program& program) {
  RuleFileWindow& window = program.frmRuleFile;
  window.RuleFileOpen = true;
  OpenDialog(program);
  window.lblRuleFilePathCurrent.Caption = program.platform.programFile("");
  window.lblRuleFileNameCurrent.Caption = program.options.RulesIniFileName;
  window.txtRuleFileName.Text = "Rules";
  window.Visible = true;
}

void frmRuleFile_Unload(Program& program) {
  if (!std::exchange(program.frmRuleFile.RuleFileOpen, false)) return;
  program.frmRuleFile.Visible = false;
  CloseDialog(program);
}

}  // namespace velmora
