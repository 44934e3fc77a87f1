#include "app/program.h"
#include "messages/hand_over.h"
#include "options/decisions/maker.h"

namespace velmora {

namespace {

constexpr const char* homePage = VELMORA_HOME_PAGE;

void tbrOptAbout_ButtonClick(Program& program, const Button& button) {
  if (button.Key == "Update") OpenHomePage(program);
  if (button.Key == "ReadMe") OpenOutside(program, program.platform.installedFile("ReadMe.rtf"));
}

}  // namespace

void OpenHomePage(Program& program) { OpenOutside(program, homePage); }

void ConnectAbout(Program& program) {
  MainWindow& frmMain = program.frmMain;
  frmMain.lblAboutTitle.Caption = program.AppTitle + " " VELMORA_VERSION ", " + std::string(makersNotice);
  frmMain.lblAboutWebSite.Caption = homePage;
  frmMain.lblAboutWebSite.Click = [&program] { OpenHomePage(program); };
  frmMain.lblAboutEmail.Caption = std::string(supportAddress);
  frmMain.lblAboutEmail.Click = [&program] { OpenOutside(program, "mailto: " + std::string(supportAddress)); };
  frmMain.tbrOptAbout.ButtonClick = [&program](Button& button) { tbrOptAbout_ButtonClick(program, button); };
}

}  // namespace velmora
