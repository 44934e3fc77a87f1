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

bool KeepRulesAs(Program& program, const std::string& name, Rules rules) {
  if (const auto fault = faultOfFileName(name); !fault.empty()) {
    program.platform.MsgBox(ruleFileNameRefused(program.AppTitle, fault));
    return false;
  }
  const std::string path = program.platform.programFile(name);
  if (!StoreRules(program, path, rules)) return false;
  // Where the settings lead to the file already, there is nothing left that could fail.
  if (name != program.options.RulesIniFileName && !keepName(program, name)) return false;
  program.options.RulesIniFileName = name;
  takeWorking(rules);
  program.rules = std::move(rules);
  NoteRulesFile(program, path);
  ShowRulesFileName(program);
  LoadRulePage(program);
  return true;
}

}  // namespace velmora
