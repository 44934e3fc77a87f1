#include "options/options_page.h"

#include "app/interface_state.h"
#include "app/program.h"
#include "options/client_and_sound.h"
#include "options/decisions/edited_options.h"
#include "options/decisions/option_texts.h"
#include "options/menu_colours.h"
#include "options/option_inputs.h"
#include "options/protocol_log.h"
#include "options/save_options.h"
#include "platform/set_for_now.h"
#include "platform/usable_file.h"

namespace velmora {

namespace {

void judgeSounds(Program& program) {
  program.sounds.SoundMaster = program.EditOptions.PlaySound == 1;
  program.sounds.DefaultSoundValid = isUsableFile(program.platform, program.EditOptions.DefaultSound, ".wav");
  program.frmMain.mnuTraySounds.Caption =
      program.sounds.SoundMaster ? "Soun&ds - On|#SoundOn" : "Soun&ds - Off|#SoundOff";
}

void UpdateOptionTexts(Program& program) {
  ShowClientIcon(program);
  judgeSounds(program);
  const OptionTexts texts = optionTexts(
      program.EditOptions, {program.DefaultClientValid, program.sounds.DefaultSoundValid}, program.AppTitle);
  OptionsPage& page = program.frmMain;
  page.lblRunStartUp.Caption = texts.RunStartUp;
  page.lblEmailCheckStartUp.Caption = texts.EmailCheckStartUp;
  page.lblMinimizeStartUp.Caption = texts.MinimizeStartUp;
  page.lblUseInterval.Caption = texts.UseInterval;
  page.lblDefaultClient.Caption = texts.DefaultClient;
  for (std::size_t i = 0; i < texts.PlaySound.size(); ++i) page.lblPlaySound[i].Caption = texts.PlaySound[i];
  ShowChoiceTexts(page, program.EditOptions);
  if (program.EditOptions.ProtocolLog == 1) ShowLogPlace(page, program.platform.programFile(protocolLogName));
  for (std::size_t i = 0; i < texts.MenuColours.size(); ++i) page.lblMenuColours[i].Caption = texts.MenuColours[i];
}

void showInputs(Program& program) {
  const SetForNow loading(program.optionsPage.OptionsLoading, true);
  ShowOptionInputs(program.frmMain, program.EditOptions);
}

/// A screen reader can write where nobody else can, as during a check: that is taken back.
void takeInput(Program& program, bool isOn, const std::function<void(Options&)>& take) {
  if (program.optionsPage.OptionsLoading) return;
  if (isOn && program.frmMain.fraOptionsPage.Enabled) {
    ChangeOptions(program, take);
  } else {
    showInputs(program);
  }
}

void setToolTips(Program& program, std::int16_t value) {
  ChangeOptions(program,
                [value](Options& edit) { edit.FromToolTips = edit.ToToolTips = edit.SubjectToolTips = value; });
}

void tbrOptMisc_ButtonClick(Program& program, const Button& button) {
  if (button.Key == "SelectAll") setToolTips(program, 1);
  if (button.Key == "SelectNone") setToolTips(program, 0);
  if (button.Key == "RestoreColWidth") RestoreColumnWidths(program);
}

}  // namespace

void ConnectOptionsPage(Program& program) {
  OptionsPage& page = program.frmMain;
  {
    const SetForNow loading(program.optionsPage.OptionsLoading, true);
    WatchOptionInputs(page, [&program](bool isOn, const auto& take) { takeInput(program, isOn, take); });
  }
  page.TreeView.NodeClick = [&program] { ShowOptionsPage(program, program.frmMain.TreeView.SelectedItem); };
  for (Toolbar& bar : page.tbrOptMisc) {
    bar.ButtonClick = [&program](Button& button) { tbrOptMisc_ButtonClick(program, button); };
  }
  program.frmMain.TrayData.TrayDrawsMenu.watch([&page](bool itself) { page.lblTrayMenu.Visible = itself; });
  ConnectMenuColours(program);
  ConnectAbout(program);
  ConnectProtocolLog(program);
  ShowOptionsPage(program, startUpSection);
}

void LoadOptionsPage(Program& program) {
  program.EditOptions = program.options;
  showInputs(program);
  OptionsDirtyCheck(program);
}

void ChangeOptions(Program& program, const std::function<void(Options&)>& change) {
  const Options before = program.EditOptions;
  change(program.EditOptions);
  followChange(before, program.options, program.EditOptions);
  showInputs(program);
  OptionsDirtyCheck(program);
}

void OptionsDirtyCheck(Program& program) {
  program.unsaved.OptionsDirty = differs(program.EditOptions, program.options);
  UpdateOptionTexts(program);
  SetInterfaceState(program);
}

void ShowOptionsPage(Program& program, std::int16_t section) {
  OptionsPage& page = program.frmMain;
  program.optionsPage.OptionsPage = section;
  page.TreeView.SelectedItem = section;
  const TreeView::Node& node = page.TreeView.Nodes.at(static_cast<std::size_t>(section - 1));
  page.lblOptionsTitle.Caption = node.Text;
  for (Image& picture : page.imgOptionsTitle) picture.Key = node.Picture;
  for (Frame& frame : page.fraOptions) frame.Visible = false;
  page.fraOptions.at(static_cast<std::size_t>(section - 1)).Visible = true;
}

bool SettleOptions(Program& program) {
  if (!program.unsaved.OptionsDirty && !program.optionsPage.notKept) return true;
  if (program.optionsPage.asking) return false;
  const SetForNow asking(program.optionsPage.asking, true);
  const Answer answer = program.platform.MsgBox(optionsNotSaved());
  if (answer == Answer::Yes) return SaveOptions(program);
  if (answer != Answer::Cancel) return false;
  program.optionsPage.notKept = false;
  LoadOptionsPage(program);
  return true;
}

}  // namespace velmora
