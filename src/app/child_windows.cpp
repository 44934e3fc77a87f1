#include "app/child_windows.h"

#include <array>

#include "app/program.h"

namespace velmora {

namespace {

struct ChildWindow {
  Form& form;
  bool open;
};

std::array<ChildWindow, 7> childWindows(Program& program) {
  return {{{program.frmFirstUse, program.frmFirstUse.FirstUseOpen},
           {program.frmMessage, program.frmMessage.AutoMessageOpen},
           {program.frmPreview, program.frmPreview.PreviewOpen},
           {program.frmPrinting, isPrinting(program)},
           {program.frmOriginal, program.activity == Activity::Fetching},
           {program.frmRuleFits, program.frmRuleFits.RuleFitsOpen},
           {program.frmRuleFile, program.frmRuleFile.RuleFileOpen}}};
}

}  // namespace

void HideChildWindows(Program& program) {
  for (const ChildWindow& window : childWindows(program)) {
    if (!window.form.Visible) continue;
    window.form.HiddenWithMain = true;
    window.form.Visible = false;
  }
}

void ShowChildWindow(Program& program, Form& window) {
  const bool mainShown = program.frmMain.State != WindowState::Minimised;
  window.HiddenWithMain = !mainShown;
  window.Visible = mainShown;
}

void ShowChildWindows(Program& program) {
  for (const ChildWindow& window : childWindows(program)) {
    if (window.form.HiddenWithMain && window.open) window.form.Visible = true;
    window.form.HiddenWithMain = false;
  }
}

}  // namespace velmora
