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

TEST_F(StartUp, TheWelcomeHoldsAutoCheckUntilItIsClosed) {
  option("UseInterval", "1");
  start();
  FirstUseWindow& window = program.frmFirstUse;
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

TEST_F(StartUp, TheEmailClientIsTheDefaultOneOrTheAccounts) {
  addAccount("Work");
  set("Settings/AcntClient1", "/mail/own.exe");
  start();
  const auto startClient = [this] { program.frmMain.tbrButtons[startClientBar]["StartEmailClient"].click(); };
  startClient();
  ASSERT_EQ(titles(), std::vector<std::string>{"Velmora - Email Client Error"});
  platform.files = {"/mail/own.exe"};
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

}  // namespace
}  // namespace velmora
