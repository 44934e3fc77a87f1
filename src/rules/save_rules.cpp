#include "rules/save_rules.h"

#include "app/program.h"
#include "options/decisions/ini_file.h"
#include "options/keep_settings.h"
#include "rules/decisions/rule_file.h"

namespace velmora {

namespace {

void showFileName(Program& program) {
  program.frmMain.lblRulesFileName.Caption = "FileName: " + program.options.RulesIniFileName;
}

}  // namespace

void ReadRules(Program& program, const std::string& path) {
  IniFile file(program.platform, path);
  readRules(file, program.rules);
  showFileName(program);
}

bool WriteRules(Program& program, const std::string& path) {
  showFileName(program);
  if (IniFile file(program.platform, path); writeRules(file, program.rules)) return true;
  TellNotSaved(program, "The Rules were not saved.",
               "The disk may be full, or this file or its folder read-only:\r\n" + path);
  return false;
}

void StartRules(Program& program) {
  ReadRules(program, program.platform.programFile(program.options.RulesIniFileName));
  program.rules.CurrentRule = 1;
  program.rules.CopyRulesToWorking();  // without rules, there is no current one
}

}  // namespace velmora
