#include "messages/message_list.h"

#include <gmock/gmock.h>

#include "support/running_program.h"

namespace velmora {
namespace {

using test::message;

class MessageList : public test::RunningProgram {
 protected:
  void SetUp() override {
    auto& work = addAccount("Work");
    work.messages = {message("w1", "From: \"Ann & Co\" <ann@example.org>\r\nDate: 11/15/2026 4:22:05 PM\r\n"),
                     message("w2", "From: bob@example.org\r\nAttachments: 1\r\n")};
    addAccount("Home").messages = {message("h1")};
    start();
    checkAll();
  }

  ListView& list() { return program.frmMain.lvwEmail; }

  /// What the desktop does when the user clicks: on a row (from 1), or beside the rows (0).
  void clickRow(std::int32_t row) {
    list().MouseMove(row, 0);
    list().UserSelected(row > 0 ? std::set{row} : std::set<std::int32_t>(), row);
    if (row > 0) list().ItemClick();
    list().Click();
  }

  static constexpr std::int32_t pastAllColumns = 5000;

  bool actionsEnabled() {
    bool all = true;
    for (const auto* key : {"EmailPreview", "EmailReply", "EmailOpen", "EmailDelete"}) {
      all = all && program.frmMain.tbrEmail[key].Enabled;
    }
    for (const auto* entry : program.frmMain.mnuEmailPopMenu.Entries) {
      EXPECT_EQ(entry->Enabled.get(), all) << "menu and toolbar agree";
    }
    return all;
  }
};

TEST_F(MessageList, ShowsEachMessageAsARow) {
  ASSERT_EQ(list().Rows().size(), 2U);
  const auto& first = list().Rows()[0];
  EXPECT_THAT(first.Cells, testing::ElementsAre("Ann and Co <ann@example.org>", "Undisclosed-Recipient", "w1",
                                                "Nov 15, 2026 04:22:05 PM", "0 KB"));
  EXPECT_EQ(first.Picture, "New");
  EXPECT_TRUE(first.Bold);
  EXPECT_EQ(list().Rows()[1].Picture, "AttachNew");
  EXPECT_EQ(tab(1), "Work  (2)");
  EXPECT_EQ(panel(2), "1") << "the new attachment is the most pressing";
  check();
  EXPECT_EQ(list().Rows()[1].Picture, "Attach");
  EXPECT_FALSE(list().Rows()[0].Bold);
}

TEST_F(MessageList, ActionsNeedAClickOnARow) {
  EXPECT_FALSE(actionsEnabled());
  EXPECT_EQ(program.SelectedMessage, 1);
  clickRow(2);
  EXPECT_TRUE(actionsEnabled());
  EXPECT_EQ(program.SelectedMessage, 2);
  clickRow(0);
  EXPECT_FALSE(actionsEnabled());
  EXPECT_EQ(program.SelectedMessage, 2);
  clickRow(1);
  check();
  EXPECT_FALSE(actionsEnabled()) << "a refill ends every selection";
}

TEST_F(MessageList, ARightClickOffersTheMenuWhereverItFalls) {
  int opened = 0;
  program.frmMain.mnuEmailPopMenu.opened.watch([&] { ++opened; });
  list().MouseMove(2, 0);
  list().UserSelected({2}, 2);
  list().RightClick();
  EXPECT_TRUE(actionsEnabled());
  list().MouseMove(0, pastAllColumns);
  list().RightClick();
  EXPECT_EQ(opened, 2);
  EXPECT_FALSE(actionsEnabled());
  EXPECT_FALSE(list().IsSelected(2));
}

TEST_F(MessageList, ATabShowsItsAccountWithoutAskingTheServer) {
  clickRow(1);
  const int connections = platform.servers["Home"].line.connections;
  program.frmMain.TabStripEmail.SelectTab(2);
  EXPECT_EQ(list().Rows().size(), 1U);
  EXPECT_EQ(panel(1), "Home - 1 Message");
  EXPECT_EQ(platform.servers["Home"].line.connections, connections);
  clickRow(1);
  program.frmMain.TabStripEmail.Click();
  EXPECT_TRUE(actionsEnabled()) << "a click on the tab already showing leaves all as it is";
}

TEST_F(MessageList, TheFocusStaysAwayWithoutAPointer) {
  int taken = 0;
  program.frmMain.cmdTakeFocus.focus.watch([&] { ++taken; });
  list().MouseMove(0, pastAllColumns);
  list().GotFocus();
  EXPECT_EQ(taken, 1);
  list().MouseMove(1, 0);
  list().GotFocus();
  EXPECT_EQ(taken, 1);
  program.frmMain.TabStripEmail.GotFocus();
  EXPECT_EQ(taken, 2);
}

TEST(MessageListWithoutAccounts, DoesNothing) {
  test::TestPlatform platform;
  Program program(platform);
  ASSERT_TRUE(Main(program));
  ShowAccountMessages(program, 0);
  EXPECT_TRUE(program.frmMain.lvwEmail.Rows().empty());
  program.frmMain.lvwEmail.Click();
}

}  // namespace
}  // namespace velmora
