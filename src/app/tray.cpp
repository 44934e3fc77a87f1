#include "app/tray.h"

#include "app/child_windows.h"
#include "app/decisions/tray_look.h"
#include "app/decisions/tray_texts.h"
#include "app/pages.h"
#include "app/program.h"
#include "app/shut_down.h"
#include "checking/check_cycle.h"
#include "messages/email_client.h"
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

/// A changed account is left by saving or cancelling only.
void showOptionsPage(Program& program) {
  mnuTrayShow_Click(program);
  if (!program.unsaved.any()) GoToPage(program, optionsPage);
}

/// The order that a click on a column's header has chosen is none of the tray's business.
void saveFromTray(Program& program) {
  program.EditOptions.SortOrder = program.options.SortOrder;
  SaveOptions(program);
}

void mnuTraySounds_Click(Program& program) {
  program.EditOptions.PlaySound = program.options.PlaySound == 0 ? 1 : 0;
  saveFromTray(program);
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
  for (MenuEntry* entry : {&frmMain.mnuTrayOptions, &frmMain.mnuTrayMenuColours, &frmMain.mnuTrayAbout}) {
    entry->Click = [&program] { showOptionsPage(program); };
  }
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
  // Who brings the window back meanwhile wants to see it.
  if (!isInTray(program) || program.activity == Activity::Ending) return;
  GoToTray(program);
  if (!program.frmMain.TrayData.TrayPresent) tellOfNoTray(program);
}

void mnuTrayAutoCheck_Click(Program& program) {
  const bool wasOn = program.options.UseInterval == 1;
  program.EditOptions.UseInterval = wasOn ? 0 : 1;
  if (wasOn && isInTray(program)) program.frmMain.TrayData.Picture = TrayPicture{autoCheckOffPicture};
  program.autoCheck.NoCheckPostponed = false;
  saveFromTray(program);
}

void mnuTrayShow_Click(Program& program) {
  if (isInTray(program)) program.frmMain.State = WindowState::Normal;
  program.frmMain.Visible = true;
  program.frmMain.activate.raise();
  Form_Resize(program);
}

}  // namespace velmora
