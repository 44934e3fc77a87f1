#include "messages/save_original.h"

#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "messages/decisions/original_texts.h"
#include "messages/preview.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class OriginalMessage : public test::RunningProgram {
 protected:
  void SetUp() override {
    server().messages = {test::message("one"),
                         {"two", "Subject: [a]/b\r\nAttachments: 2\r\n\r\n.dot\r\n..\r\n8\xFF\n"},
                         test::message("three")};
    start();
    check();
    clickRow(2);
    platform.chosenFile = "/home/me/two.eml";
    platform.written.clear();
  }

  test::MemoryServer& server() {
    return platform.servers.contains("Work") ? platform.servers["Work"] : addAccount("Work");
  }
  void save() { program.frmMain.mnuEmailSaveOriginal.Click(); }
  void fetchAttachment(int place) {
    PreviewMessage(program);
    ComboBox& box = program.frmPreview.cboAttachments;
    box.Choose(box.List.get().at(static_cast<std::size_t>(place)));
    program.frmPreview.tbrAttachments["SaveAttachment"].click();
  }
  std::string lastWords() const { return platform.asked.empty() ? "" : platform.asked.back().text; }
};

TEST_F(OriginalMessage, IsWrittenAsTheServerHasItWhereverItStandsThere) {
  const std::string original = server().messages[1].text;
  server().messages.erase(server().messages.begin());
  bool shown = false;
  server().line.onReceive = [&] {
    shown |= program.frmOriginal.Visible;
    EXPECT_FALSE(program.frmMain.tbrButtons[stopRetrievalBar].Visible);
    EXPECT_EQ(program.activity, Activity::Fetching);
  };
  save();
  EXPECT_EQ(platform.written["/home/me/two.eml"], original);
  EXPECT_EQ(platform.filesAsked.back().name, "ab");
  EXPECT_TRUE(shown && !program.frmOriginal.Visible);
  EXPECT_EQ(program.activity, Activity::Idle);
  EXPECT_EQ(program.accounts[1].AcntMsgCount, 3) << "the list stays as it is";
  EXPECT_TRUE(program.frmMain.mnuEmailSaveOriginal.Enabled) << "and so does the choice in it";
  EXPECT_EQ(onServer("Work").size(), 2U);
  EXPECT_EQ(panel(1).find("Connection in Progress"), std::string::npos);
  EXPECT_THAT(platform.asked, IsEmpty());
}

TEST_F(OriginalMessage, OfWhichNotAllComesLeavesNoFile) {
  const auto& messages = server().messages;
  const struct {
    const char* what;
    std::function<void()> prepare;
    const char* words;
  } cases[] = {
      {"it is gone",
       [&] {
         server().messages.pop_back();
         server().messages.pop_back();
       },
       "has it no longer"},
      {"two alike", [&] { server().messages[2].uid = "two"; }, "can't be told apart"},
      {"a refusal", [&] { server().answers["RETR 2"] = "-ERR no\r\n"; }, "refused to hand out"},
      {"a line that breaks", [&] { server().answers["RETR 2"] = "+OK\r\nSubject: x\r\n" + test::MemoryServer::hangUp; },
       "Work"},
      {"a full disk", [&] { platform.canWriteFiles = false; }, "could not be written"},
      {"no identifier", [&] { program.messages.at(1, 2).MsgID.clear(); }, "gives it no identifier"},
      {"a check beneath the dialog", [&] { platform.onFileAsked = [&] { program.activity = Activity::Checking; }; },
       "busy with something else"},
      {"nobody chose a file", [&] { platform.chosenFile.reset(); }, ""},
  };
  for (const auto& [what, prepare, words] : cases) {
    const auto before = messages;
    const std::string identifier = program.messages.at(1, 2).MsgID;
    platform.asked.clear();
    prepare();
    save();
    EXPECT_THAT(lastWords(), HasSubstr(words)) << what;
    EXPECT_THAT(platform.written, IsEmpty()) << what;
    program.activity = Activity::Idle;
    platform.onFileAsked = nullptr;
    server().messages = before;
    server().answers.clear();
    platform.canWriteFiles = true;
    platform.chosenFile = "/home/me/two.eml";
    program.messages.at(1, 2).MsgID = identifier;
  }
}

TEST_F(OriginalMessage, LetsAutoCheckGoOnWhenThePreviewIsClosedMeanwhile) {
  program.options.UseInterval = 1;
  PreviewMessage(program);
  server().line.onReceive = [this] {
    if (program.frmPreview.PreviewOpen) program.frmPreview.Close();
    program.frmMain.State = WindowState::Minimised;
    program.frmMain.Resize();
    EXPECT_FALSE(program.frmOriginal.Visible) << "it goes with the main window";
  };
  save();
  EXPECT_TRUE(program.frmMain.tmrMailTime.Enabled);
  EXPECT_FALSE(platform.written.empty());
}

TEST_F(OriginalMessage, CanBeStoppedAndQuitOverWithoutAWord) {
  server().line.onReceive = [this] { program.frmOriginal.tbrProgress["Stop"].click(); };
  save();
  EXPECT_FALSE(program.frmOriginal.Visible);
  server().line.onReceive = nullptr;
  save();
  EXPECT_EQ(platform.written.size(), 1U) << "and fetched once more";
  platform.written.clear();
  server().line.onReceive = [this] {
    if (!platform.hasQuit) EndApplication(program);
  };
  save();
  EXPECT_TRUE(platform.hasQuit);
  EXPECT_THAT(platform.written, IsEmpty());
  EXPECT_THAT(platform.asked, IsEmpty());
}

TEST_F(OriginalMessage, GivesItsAttachments) {
  clickRow(1);
  PreviewMessage(program);
  EXPECT_FALSE(program.frmPreview.fraAttachments.Visible);
  clickRow(2);
  EXPECT_TRUE(program.frmPreview.fraAttachments.Visible);
  EXPECT_THAT(program.frmPreview.cboAttachments.List.get(),
              ElementsAre("1. notes.txt (text/plain, 2 KB)", "2. notes.txt (text/plain, 2 KB)"));
  platform.chosenFile = "/home/me/notes.txt";
  fetchAttachment(1);
  EXPECT_EQ(platform.written["/home/me/notes.txt"], ".dot\r\n..\r\n8\xFF\n");
  platform.written.clear();
  server().messages[1].text = "Subject: another\r\n\r\n";
  fetchAttachment(0);
  EXPECT_THAT(lastWords(), HasSubstr("not in what the server sent"));
  EXPECT_THAT(platform.written, IsEmpty());
}

TEST(AttachmentName, IsCleanedAndKeepsItsEnding) {
  const struct {
    Attachment attachment;
    std::string name;
    std::string filter;
  } cases[] = {
      {{"../../.bashrc", "text/plain"}, "bashrc", ""},
      {{"invoice.PDF", "application/pdf"}, "invoice.PDF", "Attachment (*.PDF)|*.PDF|"},
      {{"a.tar.gz", "x/y"}, "a.tar.gz", "Attachment (*.gz)|*.gz|"},
      {{"x.a|*.*|b", "x/y"}, "x.a.b", "Attachment (*.b)|*.b|"},
      {{"gpj\u202E.exe", "image/jpeg"}, "gpj.exe", "Attachment (*.exe)|*.exe|"},
      {{"no ending. ", "x/y"}, "no ending. ", ""},
      {{"x.averylongending", "x/y"}, "x.averylongending", ""},
      {{"", "message/rfc822"}, "message.eml", "Attachment (*.eml)|*.eml|"},
      {{"", "image/png"}, "attachment", ""},
  };
  for (const auto& [attachment, name, filter] : cases) {
    const FileQuestion question = attachmentQuestion(attachment);
    EXPECT_EQ(question.name, name);
    EXPECT_EQ(question.filter, filter + "All Files (*)|*|");
    EXPECT_TRUE(question.forUser);
  }
}

}  // namespace
}  // namespace velmora
