#include "messages/preview.h"

#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "messages/decisions/message_file.h"
#include "platform/file_name.h"
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

  void preview(std::int32_t row) {
    clickRow(row);
    program.frmMain.tbrEmail["EmailPreview"].click();
  }
  void press(const char* key) { window().tbrButtons[key].click(); }
  PreviewWindow& window() { return program.frmPreview; }
};

TEST_F(Preview, ShowsTheSelectedMessageAndHoldsTimedChecks) {
  preview(1);
  EXPECT_FALSE(program.frmMain.tmrMailTime.Enabled);
  EXPECT_EQ(window().rtbRawMsg.Text.get(),
            "From: ann@example.org\r\nTo: me\r\nSubject: [Re]: a/b?\r\n\r\nText of [Re]: a/b?\r\n");
  window().TabStrip.SelectTab(2);
  press("Exit Preview");
  EXPECT_TRUE(program.frmMain.tmrMailTime.Enabled);
  EXPECT_THAT(platform.deletedFiles, ElementsAre("temporary.eml", "temporary.msg"));
  preview(2);
  EXPECT_TRUE(window().rtbBody.Visible) << "each showing begins with the first tab";
  check();
  EXPECT_TRUE(program.frmPreview.PreviewOpen);
  EXPECT_FALSE(window().tbrButtons["Delete"].Enabled) << "no message is selected after a fill";
  EXPECT_TRUE(window().tbrButtons["Exit Preview"].Enabled);
}

TEST_F(Preview, SavesUnderTheChosenNameOrWhereNoneIsUnderTheProposedOne) {
  preview(1);
  press("Save");
  EXPECT_EQ(platform.filesAsked[0].name, "Re ab");
  EXPECT_EQ(platform.filesAsked[0].filter,
            "OutLook Express (*.eml)|*.eml|Email Message (*.msg)|*.msg|Text File (*.txt)|*.txt|");
  EXPECT_EQ(platform.written["Re ab.eml"], window().rtbRawMsg.Text.get() + "\r\n");
  platform.written.clear();
  platform.files = {"Re ab.eml"};
  press("Save");
  EXPECT_TRUE(platform.written.empty()) << "not over a file";
  clickRow(2);
  press("Save");
  EXPECT_TRUE(platform.written.contains("profile.eml")) << "nor where programs would read it";
  platform.chosenFile = "/home/me/letter.txt";
  platform.onFileAsked = [this] {
    program.list.SelectedMessage = 1;  // as a check does, if to another number
  };
  press("Save");
  EXPECT_EQ(platform.written["/home/me/letter.txt"], window().rtbRawMsg.Text.get() + "\r\n");
}

TEST_F(Preview, IsOutOfSightWhileItsMessageIsDeleted) {
  program.options.DeleteConfirmation = 0;
  preview(1);
  platform.servers["Work"].line.onReceive = [&] { EXPECT_FALSE(window().Visible); };
  press("Delete");
  EXPECT_EQ(platform.servers["Work"].messages.size(), 1U);
  EXPECT_FALSE(program.frmPreview.PreviewOpen);
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
}

TEST(FileName, KeepsOneOfTheEndings) {
  const std::vector<std::string> endings = fileEndings("Email Message (*.msg)|*.msg|Text File (*.txt)|*.txt|");
  ASSERT_THAT(endings, ElementsAre(".msg", ".txt"));
  const std::string y(300, 'y');
  const std::pair<std::string, std::string> cases[] = {
      {"Re ab", "Re ab.msg"},
      {"a.TXT", "a.TXT"},
      {"x.desktop", "x.desktop.msg"},
      {"con.txt.sh", "con.txt.sh.msg"},
      {" .-.bashrc", "bashrc.msg"},
      {"-rf", "rf.msg"},
      {".txt", "txt.msg"},
      {"a. .txt. ", "a.txt"},
      {"a...", "a.msg"},
      {"", ""},
      {" .- ", ""},
      {y, y.substr(0, 236) + ".msg"},
      {y.substr(0, 235) + "\u6771.txt", y.substr(0, 235) + ".txt"},
      {y.substr(0, 235) + ". z", y.substr(0, 235) + ".msg"},
  };
  for (const auto& [given, saved] : cases) {
    EXPECT_EQ(savedName(given, endings), saved);
    EXPECT_EQ(savedName(saved, endings), saved);
  }
}

TEST_F(Preview, GoesWithTheMainWindow) {
  preview(1);
  program.frmMain.tbrButtons[closeBar]["Close"].click();
  for (const auto state : {WindowState::Normal, WindowState::Minimised, WindowState::Normal}) {
    EXPECT_EQ(window().Visible.get(), program.frmMain.State == WindowState::Normal);
    program.frmMain.State = state;
    program.frmMain.Resize();
  }
  EXPECT_TRUE(window().Visible);
  QuitApplication(program);
  EXPECT_FALSE(program.frmPreview.PreviewOpen);
}

}  // namespace
}  // namespace velmora
