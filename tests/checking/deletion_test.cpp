#include "checking/deletion.h"

#include <gmock/gmock.h>

#include "support/running_program.h"

namespace velmora {
namespace {

using test::message;
using testing::ElementsAre;

class Deletion : public test::RunningProgram {
 protected:
  void SetUp() override {
    server().messages = {message("a"), message("b"), message("c"), message("d")};
    addAccount("Work");
    option("MessageSort", "0");
    platform.answers = {Answer::Yes};
    start();
    check();
  }

  test::MemoryServer& server() { return platform.servers["Work"]; }

  void deleteRows(std::set<std::int32_t> rows) {
    ListView& list = program.frmMain.lvwEmail;
    const std::int32_t last = *rows.rbegin();
    list.UserSelected(std::move(rows), last);
    list.ItemClick();
    list.Click();
    program.frmMain.tbrEmail["EmailDelete"].click();
  }

  std::vector<std::string> onServer() {
    std::vector<std::string> result;
    for (const auto& each : server().messages) result.push_back(each.uid);
    return result;
  }
  std::vector<std::string> listed() {
    std::vector<std::string> result;
    for (const auto& row : program.frmMain.lvwEmail.Rows()) result.push_back(row.Cells[2]);
    return result;
  }
};

TEST_F(Deletion, TakesTheSelectedMessagesFromServerAndStore) {
  deleteRows({2, 4});
  EXPECT_THAT(onServer(), ElementsAre("a", "c"));
  EXPECT_THAT(listed(), ElementsAre("a", "c"));
  EXPECT_EQ(panel(1), "Work - 2 Message(s)");
  EXPECT_EQ(program.messages.at(1, 3).Subject, "");
  EXPECT_EQ(program.accounts[1].AcntPrevCount, 2);
  EXPECT_EQ(program.accounts[1].AcntNewCount, 2);
  ASSERT_EQ(platform.asked.size(), 1U);
  EXPECT_EQ(platform.asked[0].text,
            "Ready to Delete 2 Message(s) from 'Work'                \r\n\r\nThis operation is NOT reversible!\r\n\r\n"
            "Would you like to proceed?\r\n");
  EXPECT_EQ(platform.asked[0].title, "Velmora - Ready to Delete Message(s)");
}

TEST_F(Deletion, TheIdentifierDecidesNotTheNumber) {
  server().messages.erase(server().messages.begin());
  server().messages.insert(server().messages.begin(), {message("x"), message("y")});
  deleteRows({1, 2});
  EXPECT_THAT(onServer(), ElementsAre("x", "y", "c", "d"));
  EXPECT_THAT(listed(), ElementsAre("c", "d")) << "one that was gone leaves the list all the same";
}

TEST_F(Deletion, NoAnswerButYesDeletes) {
  platform.answers = {Answer::No};
  const int logins = server().logins;
  deleteRows({1});
  EXPECT_EQ(server().logins, logins);
  EXPECT_EQ(listed().size(), 4U);
  program.options.DeleteConfirmation = 0;
  deleteRows({1, 2, 3, 4});
  EXPECT_EQ(platform.asked.size(), 1U);
  EXPECT_THAT(onServer(), ElementsAre());
  EXPECT_EQ(panel(1), "Work - No Messages");
}

TEST_F(Deletion, AFailureIsToldAndChangesNothing) {
  for (const auto* point : {"USER", "UIDL", "DELE", "QUIT"}) {
    platform.answers = {Answer::Yes};
    platform.asked.clear();
    server().answers = {{point, test::MemoryServer::hangUp}};
    program.options.SuppressConnectErrors = 1;
    deleteRows({1, 2});
    EXPECT_EQ(titles().back(), "Velmora - Delete Connection Failure") << point;
    EXPECT_NE(platform.asked.back().text.find("NOT Deleted"), std::string::npos);
    EXPECT_EQ(listed().size(), 4U) << point;
    EXPECT_EQ(onServer().size(), 4U) << point;
    EXPECT_TRUE(program.frmMain.tbrButtons[checkAllBar].Enabled) << point;
  }
}

TEST_F(Deletion, MarkedSpamNeedsNoSelection) {
  program.messages.at(1, 3).Spam = true;
  DeleteMessages(program, 1, true);
  EXPECT_THAT(onServer(), ElementsAre("a", "b", "d"));
  EXPECT_EQ(titles(), std::vector<std::string>{"Velmora - Ready to Delete Spam Message(s)"});
}

}  // namespace
}  // namespace velmora
