#include "rules/import_rules.h"

#include "app/program.h"
#include "checking/hold_timers.h"
#include "options/decisions/ini_file.h"
#include "platform/set_for_now.h"
#include "rules/decisions/rule_file.h"
#include "rules/decisions/rule_file_name.h"
#include "rules/decisions/rule_file_texts.h"
#include "rules/keep_rules_as.h"
#include "rules/rules_page.h"
#include "rules/save_rules.h"

namespace velmora {

namespace {

/// The other user's accounts are not this one's. Returns how many rules were for one of them.
int holdForAllAccounts(RuleSet<Rule>& rules) {
  int modified = 0;
  for (Rule& rule : rules.rules()) {
    if (rule.Account == allAccounts) continue;
    rule.Account = allAccounts;
    ++modified;
  }
  return modified;
}

/// A backslash may be part of a name here, and is refused with it.
std::string bareName(const std::string& path) { return path.substr(path.rfind('/') + 1); }

Rules rulesOf(Platform& platform, const std::string& path) {
  Rules rules;
  IniFile file(platform, path);
  readRules(file, rules);
  return rules;
}

/// A file of another folder may bear the name of the one in use.
bool mayTakePlace(Program& program, const std::string& path, const std::string& name) {
  const std::string& inUse = program.rulesFile.path;
  if (path == inUse || program.platform.programFile(name) != inUse || !program.platform.fileExists(inUse)) return true;
  return program.platform.MsgBox(importReplacesRules(program.AppTitle)) == Answer::Yes;
}

void importFrom(Program& program, const std::string& path) {
  Rules imported = rulesOf(program.platform, path);
  if (imported.live.RuleCount < 1) {
    program.platform.MsgBox(ruleImportFailed(program.AppTitle));
    return;
  }
  const std::string name = rulesPrefixed(bareName(path));
  if (!mayTakePlace(program, path, name)) return;
  const int modified = holdForAllAccounts(imported.live);
  imported.CurrentRule = 1;
  imported.CopyRulesToWorking();
  // What another program has done to the file in use is what the user imports.
  const RulesFile known = program.rulesFile;
  if (path == known.path) NoteRulesFile(program, path);
  if (KeepRulesAs(program, name, std::move(imported))) {
    program.platform.MsgBox(ruleImportSuccessful(program.AppTitle, modified > 0));
  } else {
    program.rulesFile = known;
    CheckRulesDirty(program);
  }
}

void askAndImport(Program& program) {
  if (program.unsaved.RulesDirty && program.platform.MsgBox(importLosesChanges()) != Answer::Yes) return;
  const auto path = program.platform.askForFile({"", "(*.ini)|*.ini|", FileQuestion::Purpose::Open});
  if (path) importFrom(program, *path);
}

}  // namespace

void ImportRules(Program& program) {
  const SetForNow asking(program.rulePage.asking, true);
  const HoldTimers held(program);
  askAndImport(program);
}

}  // namespace velmora
