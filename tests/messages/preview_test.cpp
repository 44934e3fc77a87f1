#include "messages/preview.h"

#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "messages/message_file.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::message;
using testing::ElementsAre;

class Preview : public test::RunningProgram {
 protected:
  void SetUp() override {
    addAccount("Work").messages = {message("[Re]: a/b?", "From: ann@example.org\r\nTo: me\r\n"), message(".profile")};
    option("MessageSort", "0");
    option("UseInterval", "1");
    start();
    check();
  }

  void clickRow(std::int32_t row) {
    ListView& list = program.frmMain.lvwEmail;
    list.UserSelected({row}, row);
    list.ItemClick();
    list.Click();
  }
  void preview(std::int32_t row) {
    clickRow(row);
    program.frmMain.tbrEmail["EmailPreview"].click();
  }
  void press(const char* key) { window().tbrButtons[key].click(); }
  PreviewWindow& window() { return program.frmPreview; }
};

TEST_F(Preview, ShowsTheSelectedMessageAndHoldsTimedChecks) {
  preview(1);
  EXPECT_TRUE(program.PreviewOpen);
  EXPECT_TRUE(window().Visible);
  EXPECT_FALSE(program.frmMain.tmrMailTime.Enabled);
  EXPECT_EQ(window().Caption.get(), "Velmora - Preview  ");
  EXPECT_EQ(window().txtPrvFrom.Text.get(), "ann@example.org");
  EXPECT_EQ(window().txtPrvSubject.Text.get(), "[Re]: a/b?");
  EXPECT_EQ(window().rtbBody.Text.get(), "Text of [Re]: a/b?\r\n");
  EXPECT_EQ(window().rtbRawMsg.Text.get(),
            "From: ann@example.org\r\nTo: me\r\nSubject: [Re]: a/b?\r\n\r\nText of [Re]: a/b?\r\n");
  window().TabStrip.SelectTab(2);
  EXPECT_TRUE(window().rtbRawMsg.Visible);
  EXPECT_FALSE(window().rtbBody.Visible);
  press("Exit Preview");
  EXPECT_FALSE(program.PreviewOpen);
  EXPECT_TRUE(program.frmMain.tmrMailTime.Enabled);
  EXPECT_THAT(platform.deletedFiles, ElementsAre("temporary.eml", "temporary.msg"));
  preview(2);
  EXPECT_TRUE(window().rtbBody.Visible) << "each showing begins with the first tab";
}

TEST_F(Preview, ShowsWhatItsButtonsWorkOn) {
  preview(1);
  clickRow(2);
  EXPECT_EQ(window().txtPrvSubject.Text.get(), ".profile");
  check();
  EXPECT_TRUE(program.PreviewOpen);
  EXPECT_FALSE(window().tbrButtons["Delete"].Enabled) << "no message is selected after a fill";
  EXPECT_TRUE(window().tbrButtons["Exit Preview"].Enabled);
}

TEST_F(Preview, NeedsAMessage) {
  program.SelectedMessage = 0;
  PreviewMessage(program);
  program.SelectedMessage = 3;
  PreviewMessage(program);
  EXPECT_FALSE(program.PreviewOpen);
  clickRow(1);
  program.frmMain.lvwEmail.DblClick();
  EXPECT_TRUE(program.PreviewOpen);
}

TEST_F(Preview, SavesUnderTheNameThatTheUserChooses) {
  platform.chosenFile = "/home/me/letter.txt";
  platform.onFileAsked = [this] {
    program.SelectedMessage = 2;  // as a check does, if to another number
  };
  preview(1);
  press("Save");
  ASSERT_EQ(platform.filesAsked.size(), 1U);
  EXPECT_EQ(platform.filesAsked[0].name, "Re ab");
  EXPECT_EQ(platform.filesAsked[0].filter,
            "OutLook Express (*.eml)|*.eml|Email Message (*.msg)|*.msg|Text File (*.txt)|*.txt|");
  EXPECT_EQ(platform.written["/home/me/letter.txt"], window().rtbRawMsg.Text.get() + "\r\n");
  EXPECT_TRUE(program.PreviewOpen);
}

TEST_F(Preview, ACancelledSaveWritesUnderTheProposedName) {
  preview(1);
  press("Save");
  EXPECT_EQ(platform.written["Re ab"], window().rtbRawMsg.Text.get() + "\r\n");
  platform.written.clear();
  platform.files = {"Re ab"};
  press("Save");
  clickRow(2);
  press("Save");
  EXPECT_TRUE(platform.written.empty()) << "neither over a file nor where programs would read it";
}

TEST_F(Preview, DeletesItsMessageAndCloses) {
  platform.answers = {Answer::Yes};
  preview(1);
  press("Delete");
  EXPECT_FALSE(program.PreviewOpen);
  EXPECT_EQ(platform.servers["Work"].messages.size(), 1U);
  EXPECT_EQ(panel(1), "Work - 1 Message(s)");
  EXPECT_EQ(program.AcntLastShown, 1);
  EXPECT_TRUE(program.frmMain.tbrButtons[checkAllBar].Enabled);
}

TEST_F(Preview, DeletesNothingButWhatItShows) {
  program.options.DeleteConfirmation = 0;
  preview(1);
  program.frmMain.lvwEmail.UserSelected({1, 2}, 2);
  program.frmMain.lvwEmail.Click();
  EXPECT_EQ(window().txtPrvSubject.Text.get(), ".profile");
  auto& server = platform.servers["Work"];
  server.line.onReceive = [&] { EXPECT_FALSE(window().Visible); };
  press("Delete");
  ASSERT_EQ(server.messages.size(), 1U);
  EXPECT_EQ(server.messages[0].uid, "[Re]: a/b?");
}

TEST(FileName, IsWhatAnySystemTakes) {
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},
      {"[Re]: a/b?", "Re ab"},
      {"x<>\\:*|\"[],;y z", "xy z"},
      {"a\tb\x01\x7F"
       "c",
       "abc"},
      {"gpj\u202E.exe", "gpj.exe"},
      {std::string(70, 'x') + "\u6771\u6771" + std::string(200, 'y'),
       std::string(70, 'x') + "\u6771\u6771" + std::string(124, 'y')},
  };
  for (const auto& [subject, name] : cases) EXPECT_EQ(proposedFileName(subject), name);
  for (const auto* name : {"", "  ", ".profile", "-rf"}) EXPECT_FALSE(isHarmlessFileName(name)) << name;
}

TEST_F(Preview, GoesWithTheMainWindow) {
  preview(1);
  program.frmMain.tbrButtons[closeBar]["Close"].click();
  EXPECT_FALSE(window().Visible);
  program.frmMain.State = WindowState::Normal;
  program.frmMain.Resize();
  EXPECT_TRUE(window().Visible);
  program.frmMain.State = WindowState::Minimised;
  program.frmMain.Resize();
  EXPECT_FALSE(window().Visible);
  program.frmMain.State = WindowState::Normal;
  program.frmMain.Resize();
  EXPECT_TRUE(window().Visible);
  QuitApplication(program);
  EXPECT_FALSE(program.PreviewOpen);
}

}  // namespace
}  // namespace velmora
