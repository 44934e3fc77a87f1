#include "app/carry_out.h"

#include "app/program.h"
#include "app/tray.h"

namespace velmora {

namespace {

/// The entries of the tray's menu are off wherever they must not be chosen.
void choose(const MenuEntry& entry) {
  if (entry.Enabled) entry.Click();
}

}  // namespace

void CarryOut(Program& program, Command command) {
  if (program.activity == Activity::Ending) return;
  switch (command) {
    case Command::Show:
      return mnuTrayShow_Click(program);
    case Command::CheckAll:
      mnuTrayShow_Click(program);
      return choose(program.frmMain.mnuTrayCheckAll);
    case Command::NewMessage:
      return choose(program.frmMain.mnuTrayNewMessage);
    default:
      return;
  }
}

}  // namespace velmora
