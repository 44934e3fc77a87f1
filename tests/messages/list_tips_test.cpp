#include "messages/list_tips.h"

#include <gtest/gtest.h>

#include "support/running_program.h"

namespace velmora {
namespace {

using test::message;

/// Texts are ten units a letter wide; columns are 200 wide, of which a cell's text gets 190.
class ListTips : public test::RunningProgram {
 protected:
  void SetUp() override {
    addAccount("Work").messages = {
        message("one, two and all that follows", "From: nineteen@letter.org\r\nTo: a@b.org,c@d.org,e@f.org\r\n"),
        message("two", "From: a long sender that is cut off\r\n")};
    option("MessageSort", "0");
    start();
    program.frmMain.TextWidth = [](const std::string& text, bool bold) {
      return static_cast<std::int32_t>(text.size()) * 10 + (bold ? 5 : 0);
    };
    for (auto& column : program.frmMain.lvwEmail.Columns) column.Margin = 10;
    check();
    check();  // none is new, and so bold, any more
  }

  std::string tipAt(std::int32_t row, std::int32_t x) {
    program.frmMain.lvwEmail.MouseMove(row, x);
    return program.frmMain.tipEmail.ToolText;
  }
};

TEST_F(ListTips, OfferTheWholeTextWhereTheColumnCutsItOff) {
  EXPECT_EQ(tipAt(1, 199), "");
  EXPECT_EQ(tipAt(1, 200), "a@b.org\r\nc@d.org\r\ne@f.org");
  EXPECT_EQ(tipAt(1, 599), "one\r\n two and all that follows") << "subjects go the same way";
  EXPECT_EQ(program.pointer.HoverMessage, 1);
  EXPECT_EQ(tipAt(1, 600), "");
  EXPECT_EQ(program.pointer.HoverMessage, 0);
  EXPECT_EQ(tipAt(2, 0), "a long sender that is cut off");
  program.messages.at(1, 1).New = true;
  EXPECT_EQ(tipAt(1, 0), "nineteen@letter.org") << "bold is wider";
}

TEST_F(ListTips, StayWhileThePointerStaysInItsCell) {
  EXPECT_NE(tipAt(1, 250), "");
  program.frmMain.tipEmail.ToolText = "untouched";
  EXPECT_EQ(tipAt(1, 251), "untouched");
  check();
  EXPECT_EQ(program.frmMain.tipEmail.ToolText.get(), "") << "another message may lie there now";
  EXPECT_NE(tipAt(1, 251), "");
}

TEST_F(ListTips, NameTheRuleThatHasMarkedTheMessage) {
  program.options.FromToolTips = 0;
  MailMessage& marked = program.messages.at(1, 2);
  marked.MarkedBy = "Casino";
  EXPECT_EQ(tipAt(2, 5), "") << "no mark, no rule";
  marked.Spam = true;
  EXPECT_EQ(tipAt(1, 5), "");
  EXPECT_EQ(tipAt(2, 5), "Spam, by the rule 'Casino'");
  EXPECT_EQ(tipAt(2, program.frmMain.lvwEmail.PictureWidth), "") << "the picture's tip doesn't stay beside it";
  marked.Delete = true;
  EXPECT_EQ(tipAt(2, 5), "To be deleted, by the rule 'Casino'");
  EXPECT_EQ(tipAt(0, 5), "");
}

TEST_F(ListTips, FollowTheOptionsAndTheLastRow) {
  const std::string before = tipAt(1, 250);
  program.options.FromToolTips = program.options.SubjectToolTips = 0;
  EXPECT_EQ(tipAt(2, 0), before) << "an option that is off leaves the last tip in place";
  tipAt(0, 0);
  EXPECT_EQ(program.pointer.HoverMessage, 2) << "beside the rows the last row counts";
  EXPECT_FALSE(program.pointer.ItemUnderPointer);
  program.accounts[1].AcntMsgCount = 1;
  EXPECT_EQ(tipAt(0, 250), "") << "a message that is gone has none";
}

}  // namespace
}  // namespace velmora
