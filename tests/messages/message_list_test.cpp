#include "messages/message_list.h"

#include <gmock/gmock.h>

#include "support/running_program.h"

namespace velmora {
namespace {

using test::message;

class MessageList : public test::RunningProgram {
 protected:
  void SetUp() override {
    addAccount("Work").messages = {
        message("w1", "From: \"Ann & Co\" <ann@example.org>\r\nDate: 11/15/2026 4:22:05 PM\r\n"),
        message("w2", "From: bob@example.org\r\nAttachments: 1\r\n")};
    start();
    check();
  }

  ListView& list() { return program.frmMain.lvwEmail; }

  static constexpr std::int32_t pastAllColumns = 5000;

  bool actionsEnabled() {
    const bool all = program.frmMain.tbrEmail["EmailPreview"].Enabled;
    EXPECT_EQ(program.frmMain.tbrEmail["EmailDelete"].Enabled.get(), all);
    for (const auto* entry : {&program.frmMain.mnuEmailPreview, &program.frmMain.mnuEmailDelete}) {
      EXPECT_EQ(entry->Enabled.get(), all) << "menu and toolbar agree";
    }
    return all;
  }
};

TEST_F(MessageList, ShowsEachMessageAsARow) {
  ASSERT_EQ(list().Rows().size(), 2U);
  EXPECT_THAT(list().Rows()[0].Cells, testing::ElementsAre("Ann and Co <ann@example.org>", "Undisclosed-Recipient",
                                                           "w1", "Nov 15, 2026 04:22:05 PM", "0 KB"));
  EXPECT_EQ(list().Rows()[1].Picture, "AttachNew");
  EXPECT_EQ(panel(2), "1") << "the new attachment is the most pressing";
}

TEST_F(MessageList, ARightClickOffersTheMenuWhereverItFalls) {
  EXPECT_FALSE(actionsEnabled());
  EXPECT_EQ(program.list.SelectedMessage, 1);
  int opened = 0;
  program.frmMain.mnuEmailPopMenu.opened.watch([&] { ++opened; });
  list().MouseMove(2, 0);
  list().UserSelected({2}, 2);
  list().RightClick();
  EXPECT_TRUE(actionsEnabled());
  program.frmMain.TabStripEmail.Click();
  EXPECT_TRUE(actionsEnabled()) << "a click on the tab already showing leaves all as it is";
  list().MouseMove(0, pastAllColumns);
  list().RightClick();
  EXPECT_EQ(opened, 2);
  EXPECT_FALSE(actionsEnabled());
  EXPECT_FALSE(list().IsSelected(2));
  EXPECT_EQ(program.list.SelectedMessage, 2);
}

}  // namespace
}  // namespace velmora
