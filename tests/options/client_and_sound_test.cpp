#include "options/client_and_sound.h"

#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ClientAndSoundOfTheProgram : public test::RunningProgram {
 protected:
  void SetUp() override {
    addAccount("Work");
    addAccount("Home");
    platform.files = {"/own.EXE", "/other.exe", "/all.exe", "/ding.wav"};
    set("Settings/AcntClient2", "/other.exe");
  }

  void press(std::array<Toolbar, 2>& bars, std::size_t bar, const char* button) { bars.at(bar)[button].click(); }
  std::string picture() { return page.tbrButtons[startClientBar]["StartEmailClient"].Image; }
  std::string trayPicture() { return page.mnuTrayRunClient.Caption.get().substr(21); }
  std::string testPicture(std::size_t bar) { return page.tbrClient.at(bar)["Test"].Image; }

  MainWindow& page = program.frmMain;
};

TEST_F(ClientAndSoundOfTheProgram, ThePictureIsThatOfTheClientInForce) {
  EXPECT_EQ(platform.launchersProvided, 0);
  start();
  EXPECT_EQ(platform.launchersProvided, 1);
  EXPECT_EQ(picture() + trayPicture() + testPicture(0) + testPicture(1), "FolderFolderTestTest");
  page.TabStripEmail.SelectTab(2);
  EXPECT_EQ(picture(), "MailClient2:/other.exe");
  EXPECT_EQ(trayPicture(), picture());
  EXPECT_EQ(testPicture(0) + testPicture(1), "Test" + picture());
  page.tbrMainButtons["Accounts"].click();
  page.TabStripAcnts.SelectTab(1);
  for (const auto* path : {"/own.exe.txt", "/folder.exe", "own", ""}) {
    page.txtAcntClient.Text = path;
    EXPECT_EQ(picture(), "Folder") << path;
  }
  page.txtAcntClient.Text = "/own.EXE";
  EXPECT_EQ(picture() + page.lblClientName.Caption.get(), "MailClient1:/own.EXEown.EXE");
  page.tbrButtons[saveAccountBar]["SaveAccount"].click();
  page.tbrMoveButtons["Forward"].click();
  EXPECT_EQ(picture(), "MailClient2:/own.EXE") << "the account has moved, and its client with it";
  page.tbrMainButtons["Options"].click();
  page.txtDefaultClient.Text = "/all.exe";
  EXPECT_EQ(picture() + testPicture(0) + testPicture(1), "MailClient0:/all.exeMailClient0:/all.exeTest");
  page.mnuTrayRunClient.Click();
  EXPECT_THAT(platform.started, ElementsAre("/own.EXE 1")) << "what is saved is in force";
  page.tbrButtons[saveOptionsBar]["SaveOptions"].click();
  page.mnuTrayRunClient.Click();
  EXPECT_EQ(platform.started.back(), "/all.exe 3");
  page.tbrMainButtons["Accounts"].click();
  EXPECT_FALSE(page.tbrClient[1]["Browse"].Enabled);
  EXPECT_TRUE(page.tbrSound[1]["Browse"].Enabled);
}

TEST_F(ClientAndSoundOfTheProgram, BrowseBeginsAtWhatIsThere) {
  start();
  const auto begins = [this](std::array<Toolbar, 2>& bars, std::size_t bar, const char* chosen) {
    platform.chosenFile = chosen == nullptr ? std::nullopt : std::optional<std::string>(chosen);
    press(bars, bar, "Browse");
    return platform.filesAsked.back().start + " " + platform.filesAsked.back().filter;
  };
  page.tbrMainButtons["Options"].click();
  EXPECT_EQ(begins(page.tbrClient, 0, nullptr), "/home/ (*.exe)|*.exe|");
  EXPECT_FALSE(program.unsaved.OptionsDirty);
  EXPECT_EQ(platform.launchersProvided, 2);
  begins(page.tbrClient, 0, "/all.exe");
  EXPECT_EQ(page.txtDefaultClient.Text.get(), "/all.exe");
  EXPECT_EQ(begins(page.tbrClient, 0, nullptr), "/all.exe (*.exe)|*.exe|");
  EXPECT_EQ(begins(page.tbrSound, 0, "/ding.wav"), "/home/Sounds/ (*.wav)|*.wav|");
  page.tbrButtons[cancelOptionsBar]["Cancel"].click();
  page.tbrMainButtons["Accounts"].click();
  begins(page.tbrSound, 1, "/a/ding.wav");
  EXPECT_EQ(page.txtAcntSound.Text.get(), "/a/ding.wav");
  EXPECT_TRUE(program.unsaved.AcntDirty);
  platform.onFileAsked = [this] { QuitApplication(program); };
  platform.answers = {Answer::Cancel};
  begins(page.tbrClient, 1, "/all.exe");
  EXPECT_TRUE(platform.hasQuit && page.txtAcntClient.Text == "") << "nothing is changed behind the program's end";
}

TEST_F(ClientAndSoundOfTheProgram, ADialogIsForThePageThatItStandsOver) {
  option("UseInterval", "1");
  option("EmailCheckStartUp", "1");
  start();
  page.tbrMainButtons["Accounts"].click();
  platform.chosenFile = "/own.EXE";
  platform.onFileAsked = [&] {
    EXPECT_TRUE(program.startUp.StartUpHeld);
    page.chkEmailCheckStartUp.Value = std::int16_t{0};
    page.mnuTraySounds.Click();
    page.mnuTrayOptions.Click();
    program.autoCheck.NextCheckTime.clear();
    page.tmrMailTime.Enabled = true;
    page.tmrMailTime.tick();
    EXPECT_EQ(program.walk.AccountInfoLines, 0) << "no timed check comes beneath a dialog";
  };
  press(page.tbrClient, 1, "Browse");
  EXPECT_TRUE(!program.startUp.StartUpHeld && page.tmrMailTime.Enabled && program.CurrentPage == accountsPage);
  page.tbrButtons[cancelAccountBar]["Cancel"].click();

  bool asked = false;
  platform.onFileAsked = [&] {
    asked = true;
    EXPECT_EQ(program.accounts.AcntCurrent, 2) << "the account of the check below, not of the page";
  };
  platform.servers["Home"].line.onReceive = [&] {
    if (!asked) press(page.tbrClient, 1, "Browse");
  };
  checkAll();
  EXPECT_TRUE(asked);
  EXPECT_EQ(page.txtAcntClient.Text.get(), "/own.EXE");
  EXPECT_EQ(program.accounts.Edit(1).AcntClient + program.accounts.Edit(2).AcntClient, "/own.EXE/other.exe");
}

TEST_F(ClientAndSoundOfTheProgram, FilesThatComeAndGoAreSeenOnEnteringAPage) {
  option("DefaultClient", "/all.exe");
  start();
  EXPECT_EQ(picture(), "MailClient0:/all.exe");
  platform.files.erase("/all.exe");
  page.tbrMainButtons["Accounts"].click();
  EXPECT_TRUE(page.txtAcntClient.Enabled && page.tbrClient[1]["Browse"].Enabled && picture() == "Folder");
  page.txtAcntClient.Text = "/own.EXE";
  platform.files.insert("/all.exe");
  page.mnuTraySounds.Click();
  page.tbrButtons[saveAccountBar]["SaveAccount"].click();
  EXPECT_EQ(program.accounts[1].AcntClient, "/own.EXE") << "what the user has typed is kept, whatever hides it now";
}

TEST_F(ClientAndSoundOfTheProgram, TestTriesWhatStandsThere) {
  start();
  page.tbrMainButtons["Options"].click();
  page.txtDefaultClient.Text = "/all.exe";
  page.optRunSize.Choose(1);
  press(page.tbrClient, 0, "Test");
  EXPECT_THAT(platform.started, ElementsAre("/all.exe 1")) << "before it is saved";
  EXPECT_EQ(page.lblDefaultClient.Caption.get(), "The Default Email Client will start for all Accounts.");
  platform.canStartPrograms = false;
  press(page.tbrClient, 0, "Test");
  EXPECT_THAT(platform.asked.back().text, testing::HasSubstr("could not be started:\r\n/all.exe"));
  platform.asked.clear();
  platform.canStartPrograms = true;
  page.txtDefaultClient.Text = "/gone.exe";
  press(page.tbrClient, 0, "Test");
  press(page.tbrSound, 0, "Test");
  EXPECT_THAT(titles(), ElementsAre("Velmora - Email Client Error", "Velmora - Sound Error"));
  EXPECT_EQ(platform.asked[1].text,
            "The Sound File failed!\r\n\r\nIt appears the path and/or sound file                    \r\n"
            "do not exist or have changed location.\r\n\r\nThe Sound File must have a file extension\r\n"
            "that ends with '.wav' to work properly.\r\n\r\n");
  page.txtDefaultClient.Text = "/all.exe";
  page.txtDefaultSound.Text = "/ding.wav";
  page.chkPlaySound.Value = std::int16_t{0};
  page.tbrButtons[saveOptionsBar]["SaveOptions"].click();
  page.tbrMainButtons["Accounts"].click();
  platform.started.clear();
  press(page.tbrClient, 1, "Test");
  press(page.tbrSound, 1, "Test");
  EXPECT_THAT(platform.started, ElementsAre("/all.exe 1")) << "a valid default wins over an account without any";
  EXPECT_THAT(platform.played, ElementsAre("/ding.wav")) << "a test must sound";
  EXPECT_EQ(platform.asked.size(), 2U);
}

TEST_F(ClientAndSoundOfTheProgram, ASoundThatIsTriedCanBeStopped) {
  start();
  page.tbrMainButtons["Options"].click();
  page.txtDefaultSound.Text = "/ding.wav";
  Button& test = page.tbrSound[0]["Test"];
  platform.onSound = [&] {
    EXPECT_EQ(test.Caption.get() + test.Image.get(), "Stop   Stop");
    test.click();
    EXPECT_EQ(platform.soundsStopped, 1);
  };
  test.click();
  EXPECT_EQ(test.Caption.get() + test.Image.get(), "Test   Test");
  platform.onSound = [&] {
    platform.onSound = nullptr;
    press(page.tbrSound, 1, "Test");
    EXPECT_EQ(test.Caption.get(), "Test   ") << "the other one's sound has ended this one";
  };
  program.options.DefaultSound = "/ding.wav";
  test.click();
  EXPECT_EQ(platform.played.size(), 3U);
  EXPECT_THAT(titles(), IsEmpty());
  platform.canHear = false;
  platform.onSound = nullptr;
  test.click();
  EXPECT_THAT(platform.asked.back().text, testing::HasSubstr("could not be played"));
  EXPECT_EQ(platform.played.size(), 4U);
}

}  // namespace
}  // namespace velmora
