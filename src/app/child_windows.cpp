#include "app/child_windows.h"

#include <array>

#include "app/program.h"

namespace velmora {

namespace {

struct ChildWindow {
  Form& form;
  bool open;
};

std::array<ChildWindow, 5> childWindows(Program& program) {
  return {{{program.frmFirstUse, program.frmFirstUse.FirstUseOpen},
           {program.frmMessage, program.frmMessage.AutoMessageOpen},
           {program.frmPreview, program.frmPreview.PreviewOpen},
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

void ShowChildWindows(Program& program) {
  for (const ChildWindow& window : childWindows(program)) {
    if (window.form.HiddenWithMain && window.open) window.form.Visible = true;
    window.form.HiddenWithMain = false;
  }
}

}  // namespace velmora
