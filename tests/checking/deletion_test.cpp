#include "checking/deletion.h"

#include <gmock/gmock.h>

#include "support/running_program.h"

namespace velmora {
namespace {

using test::MemoryServer;
using test::message;
using testing::ElementsAre;

/// What the model of deletions doesn't see.
class Deletion : public test::RunningProgram {
 protected:
  void SetUp() override {
    addAccount("Work").messages = {message("a"), message("b"), message("c"), message("d")};
    addAccount("Home").messages = {message("h")};
    option("MessageSort", "0");
    platform.answers = {Answer::Yes};
    start();
    checkAll();
  }

  MemoryServer& server(const std::string& name = "Work") { return platform.servers[name]; }

  void deleteRows(std::vector<std::int32_t> rows) {
    ListView& list = program.frmMain.lvwEmail;
    const std::int32_t last = rows.back();
    list.UserSelected(std::move(rows), last);
    list.ItemClick();
    list.Click();
    program.frmMain.tbrEmail["EmailDelete"].click();
  }

  std::vector<std::string> listed() {
    std::vector<std::string> result;
    for (const auto& row : program.frmMain.lvwEmail.Rows()) result.push_back(row.Cells[2]);
    return result;
  }
};

TEST_F(Deletion, NothingElseWorksMeanwhile) {
  option("UseInterval", "1");
  program.options.UseInterval = 1;
  program.frmMain.tmrMailTime.Enabled = true;
  bool seen = false;
  server().line.onReceive = [&] {
    if (seen || server().commands.back() != "DELE 1") return;
    seen = true;
    MainWindow& frmMain = program.frmMain;
    EXPECT_FALSE(frmMain.tmrMailTime.Enabled);
    EXPECT_FALSE(frmMain.tbrButtons[checkAllBar].Enabled);
    EXPECT_FALSE(frmMain.tbrButtons[stopRetrievalBar].Visible) << "a deletion can't be stopped";
    EXPECT_FALSE(program.frmPreview.tbrButtons.Enabled);
    frmMain.lvwEmail.DeleteKey();
    frmMain.lvwEmail.DblClick();
    frmMain.mnuEmailDelete.Click();
    frmMain.lvwEmail.ColumnClick("Subject");
    program.options.MessageSort = 1;
    frmMain.lvwEmail.ColumnClick("Subject");
  };
  deleteRows({1});
  EXPECT_TRUE(seen);
  EXPECT_EQ(platform.asked.size(), 1U);
  EXPECT_FALSE(program.frmPreview.PreviewOpen);
  EXPECT_THAT(listed(), ElementsAre("b", "c", "d"));
  EXPECT_TRUE(program.frmMain.tmrMailTime.Enabled);
}

TEST_F(Deletion, TakesTheChosenMessagesFromAServerThatTellsNeitherIdentifiersNorHeaders) {
  server().answers = {{"UIDL", "-ERR what?\r\n"}, {"TOP", "-ERR what?\r\n"}};
  program.options.QuickCheck = 0;
  check();
  server().messages = {message("x"), message("d"), message("b"), message("a"), message("b")};
  deleteRows({2, 4});
  EXPECT_THAT(onServer("Work"), ElementsAre("x", "a"));
  EXPECT_THAT(listed(), ElementsAre("a", "c")) << "what was gone leaves the list all the same";
}

TEST_F(Deletion, LeavesMessagesThatNothingTellsApart) {
  server().answers["UIDL"] = "-ERR what?\r\n";
  server().messages = {{"", "\r\nOne.\r\n"}, {"", "\r\nTwo.\r\n"}, message("c")};
  check();
  deleteRows({1, 3});
  EXPECT_EQ(onServer("Work").size(), 2U);
  EXPECT_EQ(listed().size(), 1U);
}

}  // namespace
}  // namespace velmora
