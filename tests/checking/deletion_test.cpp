#include "checking/deletion.h"

#include <gmock/gmock.h>

#include "messages/email_page.h"
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
    addAccount("Home").messages = {message("h"), message("i")};
    addAccount("Club").messages = {message("k")};
    option("MessageSort", "0");
    platform.answers = {Answer::Yes};
    start();
    checkAll();
  }

  test::MemoryServer& server(const std::string& name = "Work") { return platform.servers[name]; }

  void deleteRows(std::set<std::int32_t> rows) {
    ListView& list = program.frmMain.lvwEmail;
    const std::int32_t last = *rows.rbegin();
    list.UserSelected(std::move(rows), last);
    list.ItemClick();
    list.Click();
    program.frmMain.tbrEmail["EmailDelete"].click();
  }

  void markAsSpam(int tab, int row) {
    const auto account = static_cast<std::int16_t>(tab);
    const auto number = static_cast<std::int16_t>(row);
    program.messages.at(account, number).Spam = true;
    ++program.accounts[account].AcntSpamCount;
  }

  std::vector<std::string> onServer(const std::string& name = "Work") {
    std::vector<std::string> result;
    for (const auto& each : server(name).messages) result.push_back(each.uid);
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
  EXPECT_EQ(platform.asked[0].buttons, Question::Buttons::YesNo);
  EXPECT_EQ(platform.asked[0].icon, Question::Icon::Critical);
  server().commands.clear();
  check();
  EXPECT_THAT(server().commands, testing::Not(testing::Contains("RETR 1"))) << "a quick check sees the same count";
}

TEST_F(Deletion, WhatStaysIsCountedAnew) {
  program.messages.at(1, 1).Spam = true;
  program.messages.at(1, 2).Delete = true;
  program.messages.at(1, 3).Delete = true;
  program.accounts[1].AcntSpamCount = program.accounts[1].AcntDeleteCount = 9;
  deleteRows({2});
  EXPECT_EQ(program.accounts[1].AcntSpamCount, 1);
  EXPECT_EQ(program.accounts[1].AcntDeleteCount, 1);
  EXPECT_EQ(program.accounts[1].AcntNewCount, 3);
}

TEST_F(Deletion, AnIdentifierThatStandsTwiceGoesTwice) {
  server().messages = {message("a"), message("b"), message("b")};
  check();
  deleteRows({2});
  EXPECT_THAT(onServer(), ElementsAre("a"));
  EXPECT_THAT(listed(), ElementsAre("a", "b")) << "only what was selected leaves the list";
}

TEST_F(Deletion, WithNothingSelectedItStillAsks) {
  DeleteMessages(program, 1, false);
  EXPECT_EQ(platform.asked.at(0).text.substr(0, 17), "Ready to Delete 0");
  EXPECT_EQ(onServer().size(), 4U);
}

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
  EXPECT_FALSE(program.PreviewOpen);
  EXPECT_THAT(listed(), ElementsAre("b", "c", "d"));
  EXPECT_TRUE(program.frmMain.tmrMailTime.Enabled);
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
  const std::pair<const char*, std::string> troubles[] = {{"USER", test::MemoryServer::hangUp},
                                                          {"UIDL", test::MemoryServer::hangUp},
                                                          {"DELE 2", test::MemoryServer::hangUp},
                                                          {"DELE 2", "-ERR locked\r\n"},
                                                          {"QUIT", test::MemoryServer::hangUp}};
  for (const auto& [point, answer] : troubles) {
    platform.answers = {Answer::Yes};
    platform.asked.clear();
    server().answers = {{point, answer}};
    program.options.SuppressConnectErrors = 1;
    deleteRows({1, 2});
    EXPECT_EQ(titles().back(), "Velmora - Delete Connection Failure") << point;
    EXPECT_NE(platform.asked.back().text.find("NOT Deleted"), std::string::npos);
    EXPECT_EQ(listed().size(), 4U) << point;
    EXPECT_EQ(onServer().size(), 4U) << point;
    EXPECT_TRUE(program.frmMain.tbrButtons[checkAllBar].Enabled) << point;
  }
}

TEST_F(Deletion, OfSpamGoesFromAccountToAccount) {
  for (const auto& [account, number] : {std::pair{1, 3}, {2, 1}, {2, 2}, {3, 1}}) markAsSpam(account, number);
  ShowAccountAgain(program, 2);
  ShowAccountAgain(program, 1);
  platform.answers = {Answer::No, Answer::Yes, Answer::Yes};
  server("Club").answers["DELE"] = "-ERR locked\r\n";
  server("Home").line.onReceive = [&] { EXPECT_EQ(program.accounts.AcntCurrent, 2) << "the one at hand is shown"; };
  server("Club").line.onReceive = [&] { program.frmMain.tmrRetrieveMessage.tick(); };
  program.frmMain.tbrEmail["EmailSpam"].click();
  const std::string question = "Velmora - Ready to Delete Spam Message(s)";
  EXPECT_THAT(titles(), ElementsAre(question, question, question, "Velmora - Delete Connection Failure"));
  EXPECT_THAT(platform.asked.at(1).text, testing::StartsWith("Ready to Delete 2 Spam Message(s) from 'Home' "));
  EXPECT_THAT(onServer("Work"), ElementsAre("a", "b", "c", "d"));
  EXPECT_THAT(onServer("Home"), ElementsAre());
  EXPECT_THAT(onServer("Club"), ElementsAre("k"));
  EXPECT_EQ(program.accounts[1].AcntSpamCount, 1);
  EXPECT_EQ(program.accounts[2].AcntStatusText, "Home - No Messages");
  EXPECT_EQ(program.accounts[3].AcntSpamCount, 1);
  EXPECT_THAT((std::vector{tabImage(2), tabImage(3)}), ElementsAre("MailNo", "MailYes")) << "no tab keeps on spinning";
  EXPECT_EQ(program.frmMain.TabStripEmail.SelectedItem(), 1);
  EXPECT_THAT(listed(), ElementsAre("a", "b", "c", "d"));
  EXPECT_EQ(panel(1), "Work - 4 Messages");
  EXPECT_TRUE(program.frmMain.tbrButtons[checkAllBar].Enabled);
}

}  // namespace
}  // namespace velmora
