#include "app/shut_down.h"

#include "accounts/accounts_page.h"
#include "app/first_use.h"
#include "app/pages.h"
#include "app/program.h"
#include "app/tray.h"
#include "checking/check_cycle.h"
#include "checking/check_notification.h"
#include "messages/hand_over.h"
#include "messages/preview.h"
#include "options/save_options.h"
#include "rules/edit_rules.h"
#include "rules/rename_rules.h"
#include "rules/rule_fits.h"
#include "rules/rule_report.h"

namespace velmora {

namespace {

void saveSortState(Program& program) {
  SettingsStore& settings = program.platform.settings();
  settings.SaveSetting(optionsSection, "SortColumnLastUsed", program.options.SortColumnLastUsed);
  settings.SaveSetting(optionsSection, "SortOrder", toText(program.options.SortOrder));
}

/// The question stands over the page that it speaks of.
bool mayEnd(Program& program) {
  const bool asks = program.unsaved.any() || program.rulesFile.behind || program.optionsPage.notKept;
  if (asks) mnuTrayShow_Click(program);
  const bool mayTurn = !program.unsaved.any() && program.activity == Activity::Idle && program.dialogs.count == 0;
  if (program.optionsPage.notKept && mayTurn) GoToPage(program, optionsPage);
  return SettleChanges(program) && SettleRules(program) && SettleOptions(program) && !program.unsaved.any() &&
         SettlePrinting(program);
}

}  // namespace

void SaveSession(Program& program) {
  SaveColumnWidths(program);
  saveSortState(program);
  KeepOptionsAtLast(program);
  program.platform.settings().Keep();
}

void Form_Unload(Program& program) {
  if (program.options.CloseButton == 1) {
    CloseToTray(program);
  } else {
    QuitApplication(program);
  }
}

void QuitApplication(Program& program) {
  if (mayEnd(program)) EndApplication(program);
}

void EndApplication(Program& program) {
  // A check that is under way must end without a word; it finds its client gone.
  program.connection.StopRequested = true;
  program.connection.PopClient.reset();
  SetCheckingInterface(program, Activity::Ending);
  program.frmMain.TrayData.Visible = false;
  SaveSession(program);
  frmPreview_Unload(program);
  StopPrinting(program);
  frmRuleReport_Unload(program);
  frmRuleFile_Unload(program);
  frmRuleFits_Unload(program);
  frmMessage_Unload(program);
  frmFirstUse_Unload(program);
  DeleteTemporaryFiles(program);
  program.frmMain.Visible = false;
  program.platform.quit();
}

}  // namespace velmora
