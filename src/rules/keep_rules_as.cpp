#include "rules/keep_rules_as.h"

#include <utility>

#include "app/program.h"
#include "options/keep_settings.h"
#include "rules/decisions/rule_file_name.h"
#include "rules/decisions/rule_file_texts.h"
#include "rules/rules_page.h"
#include "rules/save_rules.h"

namespace velmora {

namespace {

bool keepName(Program& program, const std::string& name) {
  program.platform.settings().SaveSetting(optionsSection, "RulesIniFileName", name);
  return KeepSettings(program, "The new FileName of the Rules was not saved. The former one stays in force.");
}

}  // namespace

bool KeepRulesAs(Program& program, std::string_view given, Rules rules) {
  const std::string name = ruleFileName(given);
  if (const auto fault = faultOfFileName(name); !fault.empty()) {
    program.platform.MsgBox(ruleFileNameRefused(program.AppTitle, fault));
    return false;
  }
  const std::string path = program.platform.programFile(name);
  if (!StoreRules(program, path, rules)) return false;
  // The settings lead to the file in use already, which holds these rules now: there is nothing left that could fail.
  if (path != program.rulesFile.path && !keepName(program, name)) return false;
  program.options.RulesIniFileName = program.EditOptions.RulesIniFileName = name;
  takeWorking(rules);
  program.rules = std::move(rules);
  NoteRulesFile(program, path);
  ShowRulesFileName(program);
  LoadRulePage(program);
  return true;
}

}  // namespace velmora
