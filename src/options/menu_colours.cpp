#include "options/menu_colours.h"

#include <array>

#include "app/program.h"
#include "checking/hold_timers.h"
#include "options/decisions/edited_options.h"
#include "options/decisions/menu_style_file.h"

namespace velmora {

namespace {

struct ColourInput {
  ColourBox OptionsPage::*box;
  std::int32_t Options::*colour;
};
constexpr std::array<ColourInput, 3> colourInputs = {{
    {&OptionsPage::lbl3DTopColour, &Options::TopColour},
    {&OptionsPage::lbl3DMiddleColour, &Options::MiddleColour},
    {&OptionsPage::lbl3DBottomColour, &Options::BottomColour},
}};

void reloadMenuStyle(Program& program) {
  IniFile file(program.platform, program.platform.programFile(menuStyleFile));
  const auto colours = readMenuStyle(file);
  if (!colours) return;
  MainWindow& frmMain = program.frmMain;
  for (PopupMenu* menu : {&frmMain.mnuTrayPopMenu, &frmMain.mnuEmailPopMenu, &frmMain.mnuColumns}) {
    menu->Colours = colours;
  }
}

/// While the dialog is open a check may be begun from the tray, and the program may be ended.
void PickColour(Program& program, std::int32_t Options::*colour) {
  if (program.EditOptions.DTheme != userTheme) return;
  const HoldTimers held(program);
  const auto picked = program.platform.askForColour(program.optionsPage.lastColour);
  if (!picked || program.activity == Activity::Ending) return;
  program.optionsPage.lastColour = *picked;
  ChangeOptions(program, [colour, &picked](Options& edit) { edit.*colour = *picked; });
}

}  // namespace

void LoadMenuColours(Program& program) {
  loadOptions(program.platform.settings(), OptionField::Read::WithTheMenus, program.options);
  WriteMenuStyleFile(program);
}

void WriteMenuStyleFile(Program& program) {
  {
    IniFile file(program.platform, program.platform.programFile(menuStyleFile));
    writeMenuStyle(file, coloursOf(program.options));
  }
  reloadMenuStyle(program);
}

void ConnectMenuColours(Program& program) {
  for (const auto& [box, colour] : colourInputs) {
    (program.frmMain.*box).Click = [&program, colour = colour] { PickColour(program, colour); };
  }
}

}  // namespace velmora
