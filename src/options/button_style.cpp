#include "options/button_style.h"

#include <initializer_list>

#include "app/program.h"
#include "options/decisions/button_style.h"

namespace velmora {

namespace {

void setRaised(std::initializer_list<Toolbar*> bars, bool raised) {
  for (Toolbar* bar : bars) bar->Raised = raised;
}

}  // namespace

void ApplyButtonStyle(Program& program) {
  const auto raised = raisedBars(program.options);
  if (!raised) return;
  MainWindow& frmMain = program.frmMain;
  setRaised({&frmMain.tbrMainButtons, &frmMain.tbrEmail, &frmMain.tbrAcnts, &frmMain.tbrRules}, raised->upper);
  for (auto* pair : {&frmMain.tbrClient, &frmMain.tbrSound, &frmMain.tbrRuleUpdate, &frmMain.tbrOptMisc}) {
    for (Toolbar& bar : *pair) bar.Raised = raised->intermediate;
  }
  setRaised({&frmMain.tbrColour, &frmMain.tbrMoveButtons, &frmMain.tbrMoveRule, &frmMain.tbrRuleFits,
             &frmMain.tbrOptAbout, &frmMain.tbrProtocolLog, &frmMain.tbrOptMove},
            raised->intermediate);
  for (Toolbar& bar : frmMain.tbrButtons) bar.Raised = raised->lower;
  setRaised({&program.frmPreview.tbrButtons, &program.frmRuleReport.tbrRuleReport, &program.frmMessage.tbrButtons,
             &program.frmFirstUse.tbrButtons, &program.frmRuleFile.tbrButtons, &program.frmRuleFits.tbrButtons},
            raised->lower);
}

}  // namespace velmora
