#include "app/first_use.h"

#include <array>
#include <cstddef>
#include <utility>

#include "app/pages.h"
#include "app/program.h"
#include "checking/auto_check.h"
#include "options/decisions/maker.h"

namespace velmora {

namespace {

constexpr std::array<const char*, 6> steps = {
    "Velmora must be set up with a least one Email Account before you can actually use it to monitor your messages. "
    "Please follow these steps.",
    "After you start Velmora, click 'Accounts' just under the Title Bar.",
    "Click 'Add Account' and enter all the appropriate information into the textboxes.",
    "Click 'Save Account' when you are done and then click 'Test Account.'",
    "If you entered all your information correctly you should receive a 'Connection Successfull' message. If not, you "
    "will need to try re-entering your information or check with someone who knows the proper connection settings.",
    "Once an Account is setup you can make changes to control Velmora. To do this click 'Options' and browse through "
    "the various settings."};

}  // namespace

void ConnectFirstUse(Program& program) {
  FirstUseWindow& window = program.frmFirstUse;
  window.Caption = program.AppTitle + " - First Time Use";
  window.lblWelcome.Caption = "Welcome to " + program.AppTitle;
  window.lblVersion.Caption = "Version " VELMORA_SHORT_VERSION;
  window.lblNotice.Caption = std::string(makersNotice);
  for (std::size_t i = 0; i < steps.size(); ++i) window.lblSteps.at(i).Caption = steps.at(i);
  window.tbrButtons.ButtonClick = [&program](Button&) { frmFirstUse_Unload(program); };
  window.Help = [&program] { program.platform.showHelp(programHelp); };
  window.Close = [&program] { frmFirstUse_Unload(program); };
}

void ShowFirstUse(Program& program) {
  program.frmFirstUse.FirstUseOpen = true;
  SuspendAutoCheck(program, TimerAction::Suspend);
  program.frmFirstUse.Visible = true;
}

void frmFirstUse_Unload(Program& program) {
  if (!std::exchange(program.frmFirstUse.FirstUseOpen, false)) return;
  program.frmFirstUse.Visible = false;
  LetAutoCheckGoOn(program);
}

}  // namespace velmora
