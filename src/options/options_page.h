#pragma once

#include "platform/controls/simple_controls.h"
#include "platform/controls/toolbar.h"

namespace velmora {

struct Program;

/// The controls of the Options page.
struct OptionsPage {
  Label lblAboutTitle;
  Label lblAboutWebSite;
  Label lblAboutEmail;
  Toolbar tbrOptAbout{"imlButtons",
                      {{"ReadMe", "View Read Me  ", "View Read Me Using WordPad", "ReadMe"},
                       {"Update", "Updates  ", "Check WebSite for Updates", "Update"}}};
};

/// Fills the About section and sets its handlers.
void ConnectAbout(Program& program);

/// Shows where users find news of the program.
void OpenHomePage(Program& program);

}  // namespace velmora
