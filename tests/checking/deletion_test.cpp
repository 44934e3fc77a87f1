#include "checking/deletion.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <sstream>

#include "messages/email_page.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::MemoryServer;
using test::message;
using testing::ElementsAre;

class Deletion : public test::RunningProgram {
 protected:
  void SetUp() override {
    fill();
    addAccount("Work");
    addAccount("Home").messages = {message("h"), message("i")};
    addAccount("Club").messages = {message("k")};
    option("MessageSort", "0");
    platform.answers = {Answer::Yes};
    start();
    checkAll();
  }

  MemoryServer& server(const std::string& name = "Work") { return platform.servers[name]; }

  void fill() { server().messages = {message("a"), message("b"), message("c"), message("d")}; }

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

struct Meanwhile {
  std::string what;
  std::vector<std::string> uids;  ///< in the mailbox when the messages b and d of a, b, c, d are deleted
  std::vector<std::string> left;
};

TEST_F(Deletion, TakesWhatHasAChosenIdentifierAndNothingElse) {
  const std::vector<Meanwhile> cases = {
      {"the same", {"a", "b", "c", "d"}, {"a", "c"}},
      {"renumbered", {"d", "c", "b", "a"}, {"c", "a"}},
      {"grown", {"x", "bb", "a", "b", "B", "c", "d", "z"}, {"x", "bb", "a", "B", "c", "z"}},
      {"shrunk", {"c", "d"}, {"c"}},
      {"emptied", {}, {}},
      {"replaced", {"w", "x", "y", "z"}, {"w", "x", "y", "z"}},
      {"doubled", {"b", "a", "b", "d", "d"}, {"a"}},
  };
  const std::map<std::string, std::string> unable = {{"UIDL", "-ERR what?\r\n"}, {"TOP", "-ERR what?\r\n"}};
  for (const auto& lacking : {std::vector<std::string>{}, {"UIDL"}, {"UIDL", "TOP"}}) {
    for (const auto& [what, uids, left] : cases) {
      SCOPED_TRACE(what + " without " + std::to_string(lacking.size()) + " commands");
      for (const auto& verb : lacking) server().answers[verb] = unable.at(verb);
      fill();
      check();
      server().messages.clear();
      for (const auto& uid : uids) server().messages.push_back(message(uid));
      platform.answers = {Answer::Yes};
      deleteRows({2, 4});
      EXPECT_EQ(onServer(), left);
      EXPECT_THAT(listed(), ElementsAre("a", "c")) << "what was gone leaves the list all the same";
      server().messages.clear();
      check();
    }
  }
  EXPECT_EQ(platform.asked.size(), cases.size() * 3) << "nothing but the questions";
}

TEST_F(Deletion, LeavesMessagesThatNothingTellsApart) {
  server().answers["UIDL"] = "-ERR what?\r\n";
  server().messages = {{"", "\r\nOne.\r\n"}, {"", "\r\nTwo.\r\n"}, message("c")};
  check();
  deleteRows({1, 3});
  EXPECT_EQ(onServer().size(), 2U);
  EXPECT_EQ(listed().size(), 1U);
}

/// All that the program knows and shows of its accounts.
std::string stateOf(Program& program) {
  std::ostringstream state;
  for (std::int16_t account = 1; account <= program.accounts.AcntNum(); ++account) {
    const AccountState& row = program.accounts[account];
    const TabStrip::Tab& tab = program.frmMain.TabStripEmail.Tabs(account);
    state << row.AcntConnected << row.AcntHasMessages << row.AcntHasNew << ' ' << row.AcntStatusText << ' '
          << row.AcntMsgCount << ' ' << row.AcntNewCount << ' ' << row.AcntPrevCount << ' ' << row.AcntSpamCount << ' '
          << row.AcntDeleteCount << ' ' << tab.Caption.get() << ' ' << tab.Image.get() << '\n';
    for (std::int16_t n = 1; n <= program.messages.MessageCapacity(); ++n) {
      const MailMessage& mail = program.messages.at(account, n);
      state << mail.From << mail.To << mail.Subject << mail.Date << mail.Size << mail.Body << mail.MsgID << ' '
            << mail.PrevMsgID << mail.Raw << mail.New << mail.Delete << mail.Spam << mail.Attach << '\n';
    }
  }
  for (int panel = 1; panel <= 4; ++panel) state << program.frmMain.StatusBar.Panels(panel).Text.get() << '\n';
  for (const auto& row : program.frmMain.lvwEmail.Rows()) {
    for (const auto& cell : row.Cells) state << cell;
    state << row.Picture << row.Bold << '\n';
  }
  return state.str();
}

class FailingDeletion : public Deletion {
 protected:
  /// Deletes the messages b and d, which is to fail, in dialog and deed. Returns whether the server heard QUIT.
  bool failToDelete() {
    const std::string before = stateOf(program);
    platform.answers = {Answer::Yes};
    platform.asked.clear();
    server().commands.clear();
    deleteRows({2, 4});
    if (platform.asked.size() != 2) return ADD_FAILURE() << "no dialog", false;
    EXPECT_EQ(titles()[1], "Velmora - Delete Connection Failure");
    EXPECT_THAT(platform.asked[1].text,
                testing::HasSubstr("Message(s) were NOT Deleted because the connection failed"));
    EXPECT_EQ(stateOf(program), before);
    EXPECT_TRUE(program.frmMain.tbrButtons[checkAllBar].Enabled);
    return std::ranges::count(server().commands, "QUIT") > 0;
  }
};

TEST_F(FailingDeletion, ByRefusalChangesNothing) {
  const std::map<std::string, std::string> refusals[] = {
      {{"STAT", "-ERR\r\n"}},
      {{"PASS", "-ERR [IN-USE] locked\r\n"}},
      {{"UIDL", "-ERR [SYS/TEMP] later\r\n"}},
      {{"DELE 2", "-ERR locked\r\n"}},
      {{"DELE 4", "-ERR locked\r\n"}},
      {{"DELE 4", "-ERR locked\r\n"}, {"RSET", "-ERR no\r\n"}},
      {{"DELE 4", "-ERR locked\r\n"}, {"RSET", MemoryServer::hangUp}},
      {{"QUIT", "-ERR some not removed\r\n"}},
      {{"QUIT", "?\r\n"}},
  };
  program.options.SuppressConnectErrors = program.options.SuppressRetrieveErrors = 1;
  for (const bool pipelining : {false, true}) {
    server().pipelining = pipelining;
    for (const auto& answers : refusals) {
      SCOPED_TRACE(answers.begin()->first + answers.begin()->second);
      server().answers = answers;
      failToDelete();
      EXPECT_EQ(onServer().size(), 4U);
    }
  }
}

TEST_F(FailingDeletion, AtEveryByteOfTheServerChangesNothing) {
  using Fault = std::optional<std::size_t> test::MemoryLine::*;
  int port = 0;
  for (const Fault fault : {&test::MemoryLine::dropAfter, &test::MemoryLine::silentAfter}) {
    for (const bool pipelining : {false, true}) {
      server().pipelining = pipelining;
      server().line.faultyConnections = std::numeric_limits<int>::max();
      // QUIT is still heard where its answer "+OK bye" is lost, wholly or in part.
      int unanswered = fault == &test::MemoryLine::dropAfter ? 8 : 9;
      for (std::size_t at = 0; unanswered > 0 && !HasFailure(); ++at) {
        SCOPED_TRACE(at);
        ASSERT_LT(at, 1000U);
        fill();
        program.accounts[1].AcntPort = std::to_string(++port);  // a server of which nothing is known yet
        server().line.*fault = at;
        const bool heard = failToDelete();
        EXPECT_EQ(onServer().size(), heard ? 2U : 4U);
        if (heard) --unanswered;
      }
      fill();
      ++*(server().line.*fault);
      platform.answers = {Answer::Yes};
      deleteRows({2, 4});
      EXPECT_THAT(listed(), ElementsAre("a", "c")) << "with the last byte it is done";
      (server().line.*fault).reset();
      fill();
      check();
    }
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
