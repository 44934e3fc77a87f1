#include "app/program.h"
#include "messages/email_client.h"
#include "options/decisions/maker.h"

namespace velmora {

namespace {

constexpr const char* homePage = VELMORA_HOME_PAGE;
constexpr const char* supportAddress = VELMORA_SUPPORT_ADDRESS;

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
  frmMain.lblAboutEmail.Caption = supportAddress;
  frmMain.lblAboutEmail.Click = [&program] { OpenOutside(program, std::string("mailto: ") + supportAddress); };
  frmMain.tbrOptAbout.ButtonClick = [&program](Button& button) { tbrOptAbout_ButtonClick(program, button); };
}

}  // namespace velmora
