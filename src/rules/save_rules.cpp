#include "rules/save_rules.h"

#include "app/program.h"
#include "options/decisions/ini_file.h"
#include "options/keep_settings.h"
#include "rules/decisions/rule_file.h"
#include "rules/decisions/rule_page_texts.h"

namespace velmora {

namespace {

/// What the program has read or written itself, it may replace without a word.
bool mayReplace(Program& program, const std::string& path) {
  const auto yes = [&program](const Question& question) { return program.platform.MsgBox(question) == Answer::Yes; };
  if (path != program.rulesFile.path) {
    return !program.platform.fileExists(path) || yes(rulesFileExists(program.AppTitle, path));
  }
  const auto content = program.platform.readFile(path);
  return !content || content == program.rulesFile.content || yes(rulesFileChanged(program.AppTitle, path));
}

/// Returns whether any rule was the account's.
template <class Row>
bool rename(RuleSet<Row>& set, const std::string& from, const std::string& to) {
  bool any = false;
  for (Row& rule : set.rules()) {
    if (rule.Account != from) continue;
    rule.Account = to;
    any = true;
  }
  return any;
}

}  // namespace

void ReadRules(Program& program, const std::string& path) {
  IniFile file(program.platform, path);
  readRules(file, program.rules);
  NoteRulesFile(program, path);
  ShowRulesFileName(program);
}

bool StoreRules(Program& program, const std::string& path, const Rules& rules) {
  if (!mayReplace(program, path)) return false;
  if (IniFile file(program.platform, path); writeRules(file, rules)) return true;
  TellNotSaved(program, "The Rules were not saved.",
               "The disk may be full, this file or its folder read-only, or the Rules larger than 4 MB:\r\n" + path);
  return false;
}

bool WriteRules(Program& program, const std::string& path) {
  if (!StoreRules(program, path, program.rules)) return false;
  takeWorking(program.rules);
  NoteRulesFile(program, path);
  ShowRulesFileName(program);
  return true;
}

void NoteRulesFile(Program& program, const std::string& path) {
  program.rulesFile = {path, program.platform.readFile(path)};
}

void ShowRulesFileName(Program& program) {
  program.frmMain.lblRulesFileName.Caption = "FileName: " + program.options.RulesIniFileName;
}

void StartRules(Program& program) {
  ReadRules(program, program.platform.programFile(program.options.RulesIniFileName));
}

/// A new account had no name that a rule could have, and a rule for all accounts isn't this one's, whatever that is
/// called. What the page holds unsaved must not be saved by this.
void RenameAccountInRules(Program& program, const std::string& from, const std::string& to) {
  if (from.empty() || from == to || from == allAccounts || to == allAccounts) return;
  const bool wasChanged = isChanged(program.rules);
  rename(program.rules.working, from, to);
  if (!rename(program.rules.live, from, to)) return;
  program.rulesFile.behind = true;
  if (!wasChanged) WriteRules(program, program.rulesFile.path);
}

}  // namespace velmora
