#include "options/client_and_sound.h"

#include <optional>
#include <string>

#include "accounts/accounts_page.h"
#include "app/program.h"
#include "checking/check_notification.h"
#include "checking/hold_timers.h"
#include "messages/email_client.h"
#include "options/decisions/client_picture.h"
#include "options/decisions/option_texts.h"
#include "platform/usable_file.h"

namespace velmora {

namespace {

/// What is browsed for, in the default's place and in an account's.
struct Browsed {
  const char* filter;
  std::string Options::*ofAll;
  std::string Account::*ofAccount;
};
constexpr Browsed client{"(*.exe)|*.exe|", &Options::DefaultClient, &Account::AcntClient};
constexpr Browsed sound{"(*.wav)|*.wav|", &Options::DefaultSound, &Account::AcntSound};

/// What stands in the box, saved or not.
std::string pathOnPage(Program& program, std::size_t bar, const Browsed& browsed) {
  return bar == defaultClientBar ? program.EditOptions.*browsed.ofAll : ShownAccount(program).*browsed.ofAccount;
}

/// While the dialog is open a check may be begun from the tray, and the program may be ended.
void browse(Program& program, std::size_t bar, const Browsed& browsed, const std::string& folder) {
  const HoldTimers held(program);
  const std::string path = pathOnPage(program, bar, browsed);
  const auto chosen =
      program.platform.askForFile({"", browsed.filter, FileQuestion::Purpose::Open, path.empty() ? folder : path});
  if (!chosen || program.activity == Activity::Ending) return;
  if (bar == defaultClientBar) {
    ChangeOptions(program, [&](Options& edit) { edit.*browsed.ofAll = *chosen; });
  } else {
    SetAccountPath(program, browsed.ofAccount, *chosen);
  }
}

void BrowseClient(Program& program, std::size_t bar) {
  program.platform.provideLaunchers();
  browse(program, bar, client, program.platform.programFile(""));
}

void BrowseSound(Program& program, std::size_t bar) { browse(program, bar, sound, program.platform.soundFile("")); }

/// The defaults are tried as they stand on the page, saved or not; for an account, the saved default is in force.
void TestClient(Program& program, std::size_t bar) {
  if (bar == defaultClientBar) {
    StartClient(program, clientAt(program, program.EditOptions.DefaultClient, program.EditOptions.RunSize));
  } else {
    StartClient(program, clientFor(program, ShownAccount(program)));
  }
}

std::string testedSound(Program& program, std::size_t bar) {
  const std::string& inForce = program.options.DefaultSound;
  if (bar == accountClientBar && isUsableFile(program.platform, inForce, ".wav")) return inForce;
  return pathOnPage(program, bar, sound);
}

void showStop(Button& test, bool on) {
  test.Caption = on ? "Stop   " : "Test   ";
  test.Image = on ? "Stop" : "Test";
}

/// The sound goes on while the program does: the button that began it ends it, another one begins its own.
void TestSound(Program& program, std::size_t bar) {
  auto& testing = program.sounds.testing;
  if (testing == bar) return program.platform.stopSound();
  const std::string path = testedSound(program, bar);
  if (!isUsableFile(program.platform, path, ".wav")) {
    program.platform.MsgBox(soundError(program.AppTitle));
    return;
  }
  auto& bars = program.frmMain.tbrSound;
  if (testing) showStop(bars.at(*testing)["Test"], false);
  showStop(bars.at(bar)["Test"], true);
  testing = bar;
  const bool heard = PlayWave(program, path);
  if (testing == bar) testing.reset();
  showStop(bars.at(bar)["Test"], false);
  if (!heard && program.activity != Activity::Ending) program.platform.MsgBox(soundUnheard(program.AppTitle));
}

/// Files come and go, and paths are being edited: what is there is looked up whenever it is shown.
void judgeClients(Program& program) {
  program.DefaultClientValid = isUsableFile(program.platform, program.EditOptions.DefaultClient, ".exe");
  const std::int16_t current = program.accounts.AcntCurrent;
  program.accounts[current].AcntClientValid =
      isUsableFile(program.platform, program.accounts.Edit(current).AcntClient, ".exe");
}

void showPicture(Program& program, std::int16_t shown, const std::string& picture) {
  MainWindow& frmMain = program.frmMain;
  frmMain.tbrButtons[startClientBar]["StartEmailClient"].Image = picture;
  frmMain.mnuTrayRunClient.Caption = "S&tart Email Client|#" + picture;
  frmMain.tbrClient[defaultClientBar]["Test"].Image = shown == 0 ? picture : "Test";
  frmMain.tbrClient[accountClientBar]["Test"].Image = shown > 0 ? picture : "Test";
}

template <class Action>
void connect(Program& program, std::array<Toolbar, 2>& bars, Action browseFor, Action test) {
  for (const std::size_t bar : {defaultClientBar, accountClientBar}) {
    bars.at(bar).ButtonClick = [&program, bar, browseFor, test](Button& button) {
      button.Key == "Browse" ? browseFor(program, bar) : test(program, bar);
    };
  }
}

}  // namespace

void ConnectClientAndSound(Program& program) {
  connect(program, program.frmMain.tbrClient, BrowseClient, TestClient);
  connect(program, program.frmMain.tbrSound, BrowseSound, TestSound);
}

void ShowClientIcon(Program& program) {
  judgeClients(program);
  const std::int16_t current = program.accounts.AcntCurrent;
  const std::int16_t shown =
      shownClient(program.DefaultClientValid, current, program.accounts[current].AcntClientValid);
  const std::string& path = shown > 0 ? program.accounts.Edit(shown).AcntClient : program.EditOptions.DefaultClient;
  showPicture(program, shown, clientPicture(shown, path));
}

void RenewClientIcon(Program& program) {
  showPicture(program, noClient, clientPicture(noClient, ""));
  ShowClientIcon(program);
}

}  // namespace velmora
