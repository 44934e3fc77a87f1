#include "app/interface_state.h"

#include "app/decisions/offers.h"
#include "app/program.h"
#include "options/decisions/edited_options.h"
#include "rules/build_rule.h"

namespace velmora {

namespace {

RuleSituation ruleSituationOf(const Program& program) {
  const auto& working = program.rules.working;
  RuleSituation situation{.rules = working.RuleCount,
                          .rule = program.rules.CurrentRule,
                          .fitsFound = !program.ruleFits.fits.empty(),
                          .reportWanted = working.Show == 1};
  if (situation.rule < 1) return situation;
  const WorkingRule& rule = working[situation.rule];
  const EntryParts built = builtEntry(program);
  const WhereChoice* choice = choiceOf(built.Where);
  situation.entries = rule.DescCount;
  situation.undone = static_cast<std::int16_t>(rule.RedoCount - rule.DescCount);
  situation.takesCriteria = choice != nullptr && choice->takesCriteria;
  situation.entryComplete = isComplete(built);
  return situation;
}

OptionsSituation optionsSituationOf(const Program& program) {
  const Options& edit = program.EditOptions;
  return {.startUpCheck = edit.EmailCheckStartUp == 1,
          .interval = edit.UseInterval == 1,
          .quiet = edit.NoCheck == 1,
          .checkMessage = edit.ShowEmailMsgBox == 1,
          .raised = edit.ButtonStyle == 1,
          .sorting = edit.MessageSort == 1,
          .userColours = edit.DTheme == userTheme,
          .defaultClient = program.DefaultClientValid,
          .defaultSound = program.sounds.DefaultSoundValid,
          .notKept = program.optionsPage.notKept,
          .log = program.optionsPage.logBegun};
}

Situation situationOf(const Program& program) {
  return {.activity = program.activity,
          .unsaved = program.unsaved,
          .page = program.CurrentPage,
          .accounts = program.accounts.AcntNum(),
          .account = program.accounts.AcntCurrent,
          .printing = isPrinting(program),
          .messageSelected = program.list.MessageSelected,
          .spamListed = program.list.SpamListed,
          .marksReported = program.frmRuleReport.CanDelete,
          .startUpCheckWaits = !program.startUp.StartUpDone,
          .startUpTimerHeld = program.startUp.StartUpHeld,
          .rules = ruleSituationOf(program),
          .options = optionsSituationOf(program)};
}

void setEmailPage(EmailPage& page, const Offers& on) {
  page.fraEmailToolBar.Enabled = on[Offer::EmailTools];
  page.TabStripEmail.Enabled = on[Offer::EmailTabs];
  page.lvwEmail.Enabled = on[Offer::EmailList];
  page.tbrEmail["EmailPreview"].Enabled = on[Offer::EmailPreview];
  page.tbrEmail["EmailDelete"].Enabled = on[Offer::EmailDelete];
  page.tbrEmail["EmailSpam"].Enabled = on[Offer::EmailSpam];
  page.tbrEmail["EmailReply"].Enabled = on[Offer::EmailReply];
  page.tbrEmail["EmailOpen"].Enabled = on[Offer::EmailOpen];
  page.tbrEmail["EmailNew"].Enabled = on[Offer::EmailNew];
  page.tbrEmail["EmailCheck"].Enabled = on[Offer::EmailCheck];
  page.mnuEmailPreview.Enabled = on[Offer::MenuPreview];
  page.mnuEmailDelete.Enabled = on[Offer::MenuDelete];
  page.mnuEmailReply.Enabled = on[Offer::MenuReply];
  page.mnuEmailOpen.Enabled = on[Offer::MenuOpen];
  page.mnuEmailSaveOriginal.Enabled = on[Offer::MenuSaveOriginal];
}

void setAccountsPage(AccountsPage& page, const Offers& on) {
  page.fraAcntToolBar.Enabled = on[Offer::AcntToolsFrame];
  page.tbrAcnts.Enabled = on[Offer::AcntTools];
  page.tbrAcnts["AcntAdd"].Enabled = on[Offer::AcntAdd];
  page.tbrAcnts["AcntDelete"].Enabled = on[Offer::AcntDelete];
  page.tbrAcnts["AcntTest"].Enabled = on[Offer::AcntTest];
  page.tbrMoveButtons["Backward"].Enabled = on[Offer::AcntBackward];
  page.tbrMoveButtons["Forward"].Enabled = on[Offer::AcntForward];
  page.TabStripAcnts.Enabled = on[Offer::AcntTabs];
  page.fraAcnt.Enabled = on[Offer::AcntFields];
  page.fraAcnt.Visible = on[Offer::AcntFieldsShown];
}

void setRulesPage(RulesPage& page, const Offers& on) {
  page.fraRulesToolbar.Visible = on[Offer::RulesToolsShown];
  page.tbrRules.Enabled = on[Offer::RulesTools];
  page.tbrRules["RulesAdd"].Enabled = on[Offer::RulesAdd];
  page.tbrRules["RulesDelete"].Enabled = on[Offer::RulesDelete];
  page.fraRules.Enabled = on[Offer::RulesFrame];
  page.lblNoRules.Visible = on[Offer::NoRulesShown];
  page.tbrMoveRule["Up"].Enabled = on[Offer::RuleUp];
  page.tbrMoveRule["Down"].Enabled = on[Offer::RuleDown];
  page.cboCondition.Enabled = on[Offer::RuleCriteria];
  page.lblCriteria.Enabled = on[Offer::RuleCriteria];
  page.txtCriteria.Enabled = on[Offer::RuleCriteria];
  page.cboBoolean.Enabled = on[Offer::RuleBoolean];
  page.tbrRuleUpdate[0]["Update"].Enabled = on[Offer::RuleUpdate];
  page.tbrRuleUpdate[0]["Clear"].Enabled = on[Offer::RuleClear];
  page.tbrRuleUpdate[1]["Undo"].Enabled = on[Offer::RuleUndo];
  page.tbrRuleUpdate[1]["Redo"].Enabled = on[Offer::RuleRedo];
  page.tbrRuleFits["ShowFits"].Enabled = on[Offer::RuleFits];
  page.chkRuleNotifyNew.Enabled = on[Offer::RuleNotifyDetails];
  page.lblRuleNotifyTime.Enabled = on[Offer::RuleNotifyDetails];
  page.txtRuleNotifyTime.Enabled = on[Offer::RuleNotifyDetails];
  page.lblRuleNotifySeconds.Enabled = on[Offer::RuleNotifyDetails];
}

void setOptionsPage(OptionsPage& page, const Offers& on) {
  page.fraOptionsPage.Enabled = on[Offer::OptionsFrame];
  page.lblStartUpDelay.Enabled = on[Offer::OptStartUpDelay];
  page.txtStartUpDelay.Enabled = on[Offer::OptStartUpDelay];
  page.lblStartUpSeconds.Enabled = on[Offer::OptStartUpDelay];
  page.lblHours.Enabled = on[Offer::OptInterval];
  page.txtHours.Enabled = on[Offer::OptInterval];
  page.lblMinutes.Enabled = on[Offer::OptInterval];
  page.txtMinutes.Enabled = on[Offer::OptInterval];
  page.lblMinutesEnd.Enabled = on[Offer::OptInterval];
  for (TimeBox& box : page.txtNoCheckTime) box.Enabled = on[Offer::OptQuietTime];
  page.optShowEmail.Enabled = on[Offer::OptCheckMessage];
  page.lblMsgBoxTime.Enabled = on[Offer::OptCheckMessage];
  page.txtMsgBoxTime.Enabled = on[Offer::OptCheckMessage];
  page.lblMsgBoxSeconds.Enabled = on[Offer::OptCheckMessage];
  for (ColourBox* box : {&page.lbl3DTopColour, &page.lbl3DMiddleColour, &page.lbl3DBottomColour}) {
    box->Enabled = on[Offer::OptColours];
  }
  page.lblUserColours.Visible = on[Offer::OptColours];
  page.fraApplyStyle.Enabled = on[Offer::OptApplyStyle];
  page.optApplyStyle.Enabled = on[Offer::OptApplyStyle];
  page.tbrProtocolLog["ShowLog"].Enabled = on[Offer::OptShowLog];
  page.fraSort.Enabled = on[Offer::OptSorting];
  page.optSortColumn.Enabled = on[Offer::OptSorting];
  page.optSortOrder.Enabled = on[Offer::OptSorting];
  page.tbrOptMove.Enabled = on[Offer::OptMove];
}

void setBrowsing(ClientAndSound& bars, const Offers& on) {
  bars.tbrClient[accountClientBar]["Browse"].Enabled = on[Offer::AcntClientBrowse];
  bars.tbrSound[accountClientBar]["Browse"].Enabled = on[Offer::AcntSoundBrowse];
}

void setSmallButtons(std::array<Toolbar, buttonBarCount>& bars, const Offers& on) {
  bars[emailHelpBar].Enabled = on[Offer::EmailHelp];
  bars[stopRetrievalBar].Visible = on[Offer::StopShown];
  bars[closeBar].Enabled = on[Offer::Close];
  bars[checkAllBar].Enabled = on[Offer::CheckAll];
  bars[startClientBar].Enabled = on[Offer::StartClient];
  bars[accountsHelpBar].Enabled = on[Offer::AcntHelp];
  bars[saveAccountBar].Enabled = on[Offer::AcntSave];
  bars[cancelAccountBar].Enabled = on[Offer::AcntCancel];
  bars[rulesHelpBar].Enabled = on[Offer::RulesHelp];
  bars[saveRulesBar].Enabled = on[Offer::RulesSave];
  bars[cancelRulesBar].Enabled = on[Offer::RulesCancel];
  bars[optionsHelpBar].Enabled = on[Offer::OptionsHelp];
  bars[saveOptionsBar].Enabled = on[Offer::OptionsSave];
  bars[cancelOptionsBar].Enabled = on[Offer::OptionsCancel];
  bars[pauseStartUpBar].Visible = on[Offer::StartUpPauseShown];
  bars[pauseStartUpBar].Buttons.front().Enabled = on[Offer::StartUpPause];
}

void setTray(Tray& tray, const Offers& on) {
  tray.mnuTrayCheckAll.Enabled = on[Offer::TrayCheckAll];
  tray.mnuTrayNewMessage.Enabled = on[Offer::TrayNewMessage];
  tray.mnuTrayRunClient.Enabled = on[Offer::TrayRunClient];
  tray.mnuTrayAutoCheck.Enabled = on[Offer::TrayAutoCheck];
  tray.mnuTraySounds.Enabled = on[Offer::TraySounds];
  tray.mnuTrayOptions.Enabled = on[Offer::TrayOptions];
  tray.mnuTrayMenuColours.Enabled = on[Offer::TrayMenuColours];
  tray.mnuTrayUpdates.Enabled = on[Offer::TrayUpdates];
  tray.mnuTrayAbout.Enabled = on[Offer::TrayAbout];
  tray.mnuTrayHelp.Enabled = on[Offer::TrayHelp];
}

void setPreview(PreviewWindow& window, const Offers& on) {
  Toolbar& buttons = window.tbrButtons;
  buttons.Enabled = on[Offer::PreviewTools];
  buttons["Save"].Enabled = on[Offer::PreviewSave];
  buttons["Save Original"].Enabled = on[Offer::PreviewSaveOriginal];
  window.tbrAttachments["SaveAttachment"].Enabled = on[Offer::PreviewSaveAttachment];
  buttons["Print"].Enabled = on[Offer::PreviewPrint];
  buttons["Delete"].Enabled = on[Offer::PreviewDelete];
  buttons["Reply"].Enabled = on[Offer::PreviewReply];
  buttons["Open"].Enabled = on[Offer::PreviewOpen];
}

}  // namespace

void SetInterfaceState(Program& program) {
  const Offers on = offersIn(situationOf(program));
  MainWindow& frmMain = program.frmMain;
  frmMain.fraMainButtons.Enabled = on[Offer::MainButtonsFrame];
  frmMain.tbrMainButtons.Enabled = on[Offer::MainButtons];
  frmMain.fraNoAcntsBanner.Visible = on[Offer::NoAcntsBannerShown];
  setEmailPage(frmMain, on);
  setAccountsPage(frmMain, on);
  setBrowsing(frmMain, on);
  setRulesPage(frmMain, on);
  setOptionsPage(frmMain, on);
  setSmallButtons(frmMain.tbrButtons, on);
  setTray(frmMain, on);
  setPreview(program.frmPreview, on);
  program.frmRuleReport.tbrRuleReport["DeleteNow"].Enabled = on[Offer::ReportDelete];
}

}  // namespace velmora
