#include "app/start_up.h"

#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "options/save_options.h"
#include "support/running_program.h"

namespace velmora {
namespace {

class StartUp : public test::RunningProgram {
 protected:
  void press(const char* key) { program.frmMain.tbrMainButtons[key].click(); }
};

TEST_F(StartUp, ASecondInstanceTouchesNothing) {
  platform.onlyInstance = false;
  EXPECT_FALSE(Main(program));
  EXPECT_TRUE(platform.tree.read.empty());
  EXPECT_TRUE(platform.tree.written.empty());
  EXPECT_FALSE(program.frmMain.Visible);
}

TEST_F(StartUp, WithoutAccountsTheProgramWorksAndOffersNothingThatNeedsOne) {
  start();
  MainWindow& frmMain = program.frmMain;
  EXPECT_TRUE(frmMain.Visible);
  EXPECT_EQ(panel(1), "No Accounts have been created...");
  EXPECT_EQ(panel(4), "Auto Check Off");
  EXPECT_EQ(panel(5), "Nov 15/26 4:21 PM");
  EXPECT_TRUE(frmMain.fraNoAcntsBanner.Visible);
  for (Button& button : frmMain.tbrEmail.Buttons) EXPECT_FALSE(button.Enabled) << button.Key;
  EXPECT_FALSE(frmMain.tbrButtons[checkAllBar].Enabled);
  EXPECT_FALSE(frmMain.tbrButtons[closeBar].Enabled);
  EXPECT_FALSE(frmMain.lvwEmail.Enabled);
  press("Options");
  EXPECT_FALSE(frmMain.fraNoAcntsBanner.Visible);
  press("Rules");
  EXPECT_TRUE(frmMain.fraNoAcntsBanner.Visible);
}

TEST_F(StartUp, TheFirstRunMakesTheLogonEntryOnce) {
  start();
  EXPECT_EQ(platform.logonEntriesMade, 1);
  EXPECT_EQ(platform.tree.values["Settings/FirstUse"], "1");
  EXPECT_EQ(platform.tree.values["Settings\\Options/RunStartUp"], "1");
  EXPECT_TRUE(program.frmFirstUse.Visible);
  Program next(platform);
  platform.tree.written.clear();
  ASSERT_TRUE(Main(next));
  EXPECT_EQ(platform.logonEntriesMade, 1);
  EXPECT_FALSE(next.frmFirstUse.Visible);
  EXPECT_TRUE(platform.tree.written.empty()) << "nothing is written back before something changes";
}

TEST_F(StartUp, TheWelcomeHoldsAutoCheckUntilItIsClosed) {
  option("UseInterval", "1");
  start();
  FirstUseWindow& window = program.frmFirstUse;
  EXPECT_EQ(window.Caption.get(), "Velmora - First Time Use");
  EXPECT_EQ(window.lblVersion.Caption.get(), "Version 0.1");
  EXPECT_EQ(window.lblWelcome.Caption.get(), "Welcome to Velmora");
  EXPECT_FALSE(program.frmMain.tmrMailTime.Enabled);
  program.frmMain.State = WindowState::Minimised;
  program.frmMain.Resize();
  EXPECT_FALSE(window.Visible);
  program.frmMain.mnuTrayShow.Click();
  EXPECT_TRUE(window.Visible);
  window.Close();
  EXPECT_FALSE(window.Visible);
  EXPECT_TRUE(program.frmMain.tmrMailTime.Enabled);
}

TEST_F(StartUp, ShowsTheFirstAccountOfThoseInTheTree) {
  addAccount("Work");
  addAccount("Home", false);
  start();
  EXPECT_EQ(program.accounts.AcntCurrent, 1);
  EXPECT_EQ(tab(1), "Work");
  EXPECT_EQ(tabImage(2), "MailNoDisabled");
  EXPECT_EQ(panel(1), "Work");
  EXPECT_EQ(panel(2), "");
  EXPECT_EQ(panel(3), "Not Checked");
  EXPECT_EQ(program.accounts[2].AcntLastCheckTime, "4:21 PM");
  EXPECT_FALSE(program.frmMain.fraNoAcntsBanner.Visible);
}

TEST_F(StartUp, ChoosesTheTimerAndTheWindowsStateByTheOptions) {
  addAccount("Work");
  option("UseInterval", "1");
  option("MinimizeStartUp", "1");
  start();
  EXPECT_TRUE(program.frmMain.tmrMailTime.Enabled);
  EXPECT_FALSE(program.frmMain.tmrStatusBar.Enabled);
  EXPECT_FALSE(program.frmMain.Visible);
  EXPECT_TRUE(program.frmMain.State == WindowState::Minimised);
  option("UseInterval", "0");
  Program next(platform);
  ASSERT_TRUE(Main(next));
  EXPECT_EQ(next.frmMain.TrayData.Tip.get(), "Auto Check is Off");
  platform.clock.minute = 22;
  program.frmMain.tmrMailTime.tick();
  EXPECT_EQ(panel(5), "Nov 15/26 4:22 PM");
}

TEST_F(StartUp, ColumnWidthsFollowTheOption) {
  const auto widths = [](Program& shown) {
    std::vector<int> result;
    for (auto& column : shown.frmMain.lvwEmail.Columns) result.push_back(column.Width);
    return result;
  };
  addAccount("Work");
  start();
  EXPECT_THAT(widths(program), testing::ElementsAre(200, 200, 200, 200, 93));
  EXPECT_THAT(platform.tree.read, testing::Not(testing::Contains("ColToWidth"))) << "kept widths don't count then";
  option("RestoreColWidth", "0");
  option("ColToWidth", "77");
  Program next(platform);
  ASSERT_TRUE(Main(next));
  EXPECT_THAT(widths(next), testing::ElementsAre(200, 77, 200, 200, 200));
  next.frmMain.lvwEmail.Columns[4].Width = 55;
  QuitApplication(next);
  EXPECT_EQ(platform.tree.values["Settings\\Options/ColSizeWidth"], "55");
}

TEST_F(StartUp, ClosingGoesToTheTrayUnlessTheOptionOrQuitSaysOtherwise) {
  addAccount("Work");
  start();
  platform.tree.written.clear();
  program.frmMain.Close();
  EXPECT_FALSE(platform.hasQuit);
  EXPECT_FALSE(program.frmMain.Visible);
  EXPECT_TRUE(platform.tree.written.empty());
  press("Quit");
  EXPECT_TRUE(platform.hasQuit);
  EXPECT_THAT(platform.tree.written, testing::ElementsAre("SortColumnLastUsed", "SortOrder"));
  EXPECT_THAT(platform.deletedFiles, testing::ElementsAre("temporary.eml", "temporary.msg"));

  option("CloseButton", "0");
  Program next(platform);
  platform.hasQuit = false;
  ASSERT_TRUE(Main(next));
  next.frmMain.Close();
  EXPECT_TRUE(platform.hasQuit);
}

TEST_F(StartUp, MinimisingHidesTheWindow) {
  addAccount("Work");
  start();
  program.frmMain.State = WindowState::Minimised;
  bool yielded = false;
  platform.onYield = [&] { yielded = program.frmMain.Visible; };
  program.frmMain.Resize();
  EXPECT_TRUE(yielded) << "the event loop runs once before the window goes";
  EXPECT_FALSE(program.frmMain.Visible);
}

TEST_F(StartUp, TheEmailClientIsTheDefaultOneOrTheAccounts) {
  addAccount("Work");
  set("Settings/AcntClient1", "/mail/own.exe");
  start();
  const auto startClient = [this] { program.frmMain.tbrButtons[startClientBar]["StartEmailClient"].click(); };
  startClient();
  ASSERT_EQ(titles(), std::vector<std::string>{"Velmora - Email Client Error"});
  EXPECT_EQ(platform.asked[0].text,
            "The Email Client Program failed!\r\n\r\nIt appears the path and/or filename                    \r\n"
            "do not exist or have changed location.\r\n\r\nThe FileName must have a file extension\r\n"
            "that ends with '.exe' to work properly.\r\n\r\n");
  program.accounts[1].AcntClientValid = true;
  startClient();
  platform.files = {"/mail/default.exe"};
  program.EditOptions.DefaultClient = "/mail/default.exe";
  SaveOptions(program);
  startClient();
  EXPECT_THAT(platform.started, testing::ElementsAre("/mail/own.exe 1", "/mail/default.exe 3"));
  EXPECT_EQ(platform.asked.size(), 1U);
  platform.canStartPrograms = false;
  startClient();
  EXPECT_EQ(platform.asked.size(), 2U);
}

TEST_F(StartUp, ThePanelUnderThePointerTellsMore) {
  addAccount("Work");
  start();
  StatusBar& bar = program.frmMain.StatusBar;
  bar.Left = 10;
  for (int number = 1; number <= StatusBar::panelCount; ++number) {
    bar.Panels(number).Left = (number - 1) * 100;
    bar.Panels(number).Width = 90;
  }
  const std::pair<std::int32_t, const char*> cases[] = {{9, ""},
                                                        {10, "Work"},
                                                        {109, "Work"},
                                                        {110, ""},
                                                        {210, "Not Checked"},
                                                        {310, "Auto Check is Off"},
                                                        {499, "Current: November 15, 2026 4:21 PM"},
                                                        {500, ""}};
  for (const auto& [x, tip] : cases) {
    bar.ToolTipText = "other";
    bar.MouseMove(x, 3);
    EXPECT_EQ(bar.ToolTipText.get(), tip) << x;
  }
}

TEST_F(StartUp, HelpOpensAtThePagesTopic) {
  start();
  program.frmMain.tbrButtons[helpBar]["Help"].click();
  EXPECT_EQ(platform.helpShown, std::vector<int>{130});
}

TEST_F(StartUp, AWindowBroughtBackWhileItGoesStays) {
  addAccount("Work");
  start();
  program.frmMain.State = WindowState::Minimised;
  platform.onYield = [&] { program.frmMain.State = WindowState::Normal; };
  program.frmMain.Resize();
  EXPECT_TRUE(program.frmMain.Visible);
}

TEST_F(StartUp, ClientAndSoundMustBeFilesOfTheirKind) {
  addAccount("Work");
  set("Settings/AcntClient1", "/mail/Client.EXE");
  set("Settings/AcntSound1", "/sounds/ding.mp3");
  platform.files = {"/mail/Client.EXE", "/sounds/ding.mp3"};
  start();
  EXPECT_TRUE(program.accounts[1].AcntClientValid);
  EXPECT_FALSE(program.accounts[1].AcntSoundValid);
}

}  // namespace
}  // namespace velmora
