#include "app/tray.h"

#include "app/child_windows.h"
#include "app/decisions/tray_look.h"
#include "app/decisions/tray_texts.h"
#include "app/pages.h"
#include "app/program.h"
#include "app/shut_down.h"
#include "checking/check_cycle.h"
#include "messages/email_client.h"
#include "messages/hand_over.h"
#include "options/save_options.h"

namespace velmora {

namespace {

/// While the window shows, the picture in the tray has nothing to do.
bool isInTray(const Program& program) { return program.frmMain.State == WindowState::Minimised; }

void showInTray(Program& program, std::int16_t picture, std::string_view tip) {
  program.frmMain.TrayData.Picture = TrayPicture{picture};
  program.frmMain.TrayData.Tip = trayTip(tip);
}

void tellOfNoTray(Program& program) {
  SettingsStore& settings = program.platform.settings();
  if (settings.GetSetting(settingsSection, "NoTrayTold", "0") != "0") return;
  settings.SaveSetting(settingsSection, "NoTrayTold", "1");
  settings.Keep();  // nobody has asked for it: where it can't be kept, it is told once more
  program.platform.MsgBox(noTrayNotice(program.AppTitle));
}

/// Changed accounts and rules are left by saving or cancelling only, and what a dialog brings belongs to the page
/// below.
void showOptions(Program& program, std::int16_t section) {
  mnuTrayShow_Click(program);
  if (program.unsaved.AcntDirty || program.unsaved.RulesDirty || program.dialogs.count > 0) return;
  GoToPage(program, optionsPage);
  ShowOptionsPage(program, section);
}

/// The entry tells of the Options page, saved or not. What else was changed there is saved with it, unless the user is
/// being asked what is to become of that.
void mnuTraySounds_Click(Program& program) {
  if (program.optionsPage.asking) return;
  const std::int16_t sounds = program.EditOptions.PlaySound == 1 ? 0 : 1;
  ChangeOptions(program, [sounds](Options& edit) { edit.PlaySound = sounds; });
  SaveOptions(program);
}

void mnuTrayAutoCheck_Click(Program& program) {
  if (!program.optionsPage.asking) SwitchAutoCheck(program, program.options.UseInterval != 1);
}

}  // namespace

void ConnectTray(Program& program) {
  MainWindow& frmMain = program.frmMain;
  frmMain.TrayData.LeftButtonDown = [&program] {
    if (isInTray(program)) mnuTrayShow_Click(program);
  };
  frmMain.TrayData.RightButtonUp = [&program] {
    if (isInTray(program)) program.frmMain.mnuTrayPopMenu.PopUp();
  };
  frmMain.mnuTrayShow.Click = [&program] { mnuTrayShow_Click(program); };
  frmMain.mnuTrayCheckAll.Click = [&program] { CheckAllAccounts(program); };
  frmMain.mnuTrayNewMessage.Click = [&program] { NewMessage(program); };
  frmMain.mnuTrayRunClient.Click = [&program] { StartClientProgram(program); };
  frmMain.mnuTrayAutoCheck.Click = [&program] { mnuTrayAutoCheck_Click(program); };
  frmMain.mnuTraySounds.Click = [&program] { mnuTraySounds_Click(program); };
  frmMain.mnuTrayOptions.Click = [&program] { showOptions(program, startUpSection); };
  frmMain.mnuTrayMenuColours.Click = [&program] { showOptions(program, coloursSection); };
  frmMain.mnuTrayAbout.Click = [&program] { showOptions(program, aboutSection); };
  frmMain.mnuTrayUpdates.Click = [&program] { OpenHomePage(program); };
  frmMain.mnuTrayHelp.Click = [&program] { program.platform.showHelp(programHelp); };
  frmMain.mnuTrayQuitApplication.Click = [&program] { QuitApplication(program); };
}

void AddToTray(Program& program) {
  ShowPlainTrayPicture(program);
  program.frmMain.TrayData.Visible = true;
}

void ShowPlainTrayPicture(Program& program) { showInTray(program, plainPicture, program.AppTitle); }

void UpdateTrayIcon(Program& program) {
  if (!isInTray(program)) return;
  const TrayLook look = trayLook(program.accounts, program.options.ShowNewOnly == 1, program.trayTurn.TrayAccount);
  program.trayTurn.TrayAccount = look.nextAccount;
  program.frmMain.TrayData.Picture = look.picture;
  program.frmMain.TrayData.Tip = look.tip;
}

void GoToTray(Program& program) {
  program.frmMain.Visible = false;
  if (program.options.UseInterval == 0) showInTray(program, autoCheckOffPicture, "Auto Check is Off");
}

void CloseToTray(Program& program) {
  program.frmMain.State = WindowState::Minimised;
  Form_Resize(program);
}

void Form_Resize(Program& program) {
  if (!isInTray(program)) {
    ShowPlainTrayPicture(program);
    ShowChildWindows(program);
    return;
  }
  HideChildWindows(program);
  program.platform.yield();
  if (program.activity == Activity::Ending) return;
  // Who brings the window back meanwhile wants to see it. Some desktops do so by themselves where there is no tray.
  if (isInTray(program)) GoToTray(program);
  if (!program.frmMain.TrayData.TrayPresent) tellOfNoTray(program);
}

void SwitchAutoCheck(Program& program, bool on) {
  ChangeOptions(program, [on](Options& edit) { edit.UseInterval = on ? 1 : 0; });
  if (!on && isInTray(program)) program.frmMain.TrayData.Picture = TrayPicture{autoCheckOffPicture};
  program.autoCheck.NoCheckPostponed = false;
  SaveOptions(program);
}

void mnuTrayShow_Click(Program& program) {
  if (isInTray(program)) program.frmMain.State = WindowState::Normal;
  program.frmMain.Visible = true;
  program.frmMain.activate.raise();
  Form_Resize(program);
}

}  // namespace velmora
