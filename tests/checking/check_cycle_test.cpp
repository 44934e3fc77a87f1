#include "checking/check_cycle.h"

#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "checking/pop_session.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::MemoryServer;
using test::message;
using testing::ElementsAre;
using testing::HasSubstr;

class CheckCycle : public test::RunningProgram {};

TEST_F(CheckCycle, CheckAllShowsEachEnabledAccountAndComesBack) {
  addAccount("Work").messages = {message("a"), message("b")};
  addAccount("Off", false).messages = {message("x")};
  addAccount("Home").messages = {};
  addAccount("Lost").users.clear();
  start();
  checkAll();
  EXPECT_EQ(program.accounts[1].AcntStatusText, "Work - 2 Messages");
  EXPECT_EQ(program.accounts[2].AcntLastCheckText, "Not Checked");
  EXPECT_EQ(program.accounts[3].AcntStatusText, "Home - No Messages");
  EXPECT_EQ(program.accounts[4].AcntStatusText, "Lost - Error Accessing Account");
  EXPECT_EQ(program.accounts[0].AcntLastCheckText, "Checked: 4:21 PM on Nov 15/26");
  const std::vector<std::string> pictures = {tabImage(1), tabImage(2), tabImage(3), tabImage(4)};
  EXPECT_THAT(pictures, ElementsAre("MailYes", "MailNoDisabled", "MailNo", "MailError"));
  EXPECT_EQ(program.frmMain.TabStripEmail.SelectedItem(), 1);
  EXPECT_EQ(program.accounts.AcntCurrent, 1);
  EXPECT_EQ(program.frmMain.lvwEmail.Rows().size(), 2U) << "the list shows the account that was showing before";
  EXPECT_EQ(panel(1), "Work - 2 Messages");
  EXPECT_EQ(panel(3), "Checked at: 4:21 PM");
  EXPECT_EQ(panel(4), "Auto Check Off");
  EXPECT_THAT(titles(), ElementsAre("Velmora - Error Establishing Connection"));
  EXPECT_EQ(program.TotalMessages, 2);
}

TEST_F(CheckCycle, TheInterfaceIsDisabledWhileAWalkRunsAndOnlyThen) {
  auto& server = addAccount("Work");
  server.messages = {message("a")};
  start();
  program.frmMain.tbrMainButtons["Rules"].click();
  bool looked = false;
  server.line.onReceive = [&] {
    looked = true;
    MainWindow& frmMain = program.frmMain;
    for (const Frame* frame : {&frmMain.fraMainButtons, &frmMain.fraEmailToolBar, &frmMain.fraAcntToolBar}) {
      EXPECT_FALSE(frame->Enabled);
    }
    for (const TabStrip* strip : {&frmMain.TabStripEmail, &frmMain.TabStripAcnts}) EXPECT_FALSE(strip->Enabled);
    for (const std::size_t bar : {helpBar, closeBar, checkAllBar, startClientBar}) {
      EXPECT_FALSE(frmMain.tbrButtons[bar].Enabled);
    }
    EXPECT_TRUE(frmMain.tbrButtons[stopRetrievalBar].Enabled);
    EXPECT_TRUE(frmMain.tbrButtons[stopRetrievalBar].Visible);
    EXPECT_EQ(frmMain.tbrButtons[stopRetrievalBar].Buttons.front().Caption.get(), "Stop Retrieval      ");
    EXPECT_TRUE(frmMain.fraMain[emailPage].Visible) << "a check brings the Email page forward";
    EXPECT_FALSE(frmMain.fraMain[rulesPage].Visible);
  };
  checkAll();
  ASSERT_TRUE(looked);
  EXPECT_TRUE(program.frmMain.fraMainButtons.Enabled);
  EXPECT_FALSE(program.frmMain.tbrButtons[stopRetrievalBar].Visible);
  EXPECT_TRUE(program.frmMain.fraMain[rulesPage].Visible);
  EXPECT_FALSE(program.frmMain.fraMain[emailPage].Visible);
  EXPECT_FALSE(program.frmMain.tmrRetrieveMessage.Enabled);
  EXPECT_TRUE(program.frmMain.Pointer == MousePointer::Default);
}

TEST_F(CheckCycle, ShowsHowFarARetrievalHasCome) {
  auto& server = addAccount("Work");
  server.messages = {message("a"), message("b"), message("c")};
  server.line.chunk = 40;
  server.line.pace = pop::Milliseconds(60);
  start();
  std::set<std::string> progress;
  server.line.onReceive = [&] {
    const bool fetching = program.frmMain.tmrRetrieveMessage.Enabled && panel(3).ends_with("% Complete");
    if (!fetching) return;
    EXPECT_TRUE(program.frmMain.Pointer == MousePointer::Hourglass);
    EXPECT_TRUE(program.frmMain.ProgressBar.Visible);
    progress.insert(panel(4));
  };
  check();
  EXPECT_THAT(progress, testing::Contains("Retrieving... (1 of 3)"));
  EXPECT_THAT(progress, testing::Contains("Retrieving... (3 of 3)"));
  EXPECT_FALSE(program.frmMain.ProgressBar.Visible);
}

TEST_F(CheckCycle, ProgressNeverPassesItsTotal) {
  addAccount("Work");
  start();
  program.ReceivedCount = 1;
  auto events = makePopEvents(program);
  platform.servers["Work"].messages = {message("a")};
  check();
  events->Progress(*program.PopClient, 300, 200);
  EXPECT_EQ(program.frmMain.ProgressBar.Value.get(), 200);
  EXPECT_EQ(panel(3), "100 % Complete");
  events->Progress(*program.PopClient, 25, 200);
  EXPECT_EQ(panel(3), "12 % Complete") << "half to even";
  events->Progress(*program.PopClient, 0, 0);
  EXPECT_EQ(panel(3), "100 % Complete");
}

TEST_F(CheckCycle, TheTabTurnsBackwardsWhileAnAccountIsRetrieved) {
  auto& server = addAccount("Work");
  server.messages = {message("a")};
  start();
  std::vector<std::string> frames;
  server.line.onReceive = [&] {
    program.frmMain.tmrRetrieveMessage.tick();
    frames.push_back(tabImage(1));
  };
  check();
  ASSERT_GE(frames.size(), 4U);
  EXPECT_EQ(frames[0], "MailSpin8");
  EXPECT_EQ(frames[1], "MailSpin7");
  EXPECT_EQ(tabImage(1), "MailYes");
}

TEST_F(CheckCycle, StopEndsTheFetchAndTheWalk) {
  auto& first = addAccount("Work");
  first.messages = {message("a"), message("b"), message("c")};
  first.line.chunk = 30;
  first.line.pace = pop::Milliseconds(60);
  addAccount("Home").messages = {message("h")};
  start();
  const auto* client = program.PopClient.get();
  first.line.onReceive = [&] {
    if (!panel(4).starts_with("Retrieving")) return;
    stop();
    program.frmMain.tmrRetrieveMessage.tick();
    EXPECT_EQ(panel(1), "Terminating Connection...Please Wait");
    EXPECT_THAT(panel(4), HasSubstr("Stopping Retrieve... "));
    EXPECT_EQ(program.frmMain.tbrButtons[stopRetrievalBar].Buttons.front().Caption.get(), "Terminating...      ");
    EXPECT_FALSE(program.frmMain.tmrRetrieveMessage.Enabled);
  };
  checkAll();
  EXPECT_NE(program.PopClient.get(), client) << "the client is replaced";
  EXPECT_EQ(program.accounts[1].AcntStatusText, "Work - User Stopped Retrieval");
  EXPECT_EQ(tabImage(1), "MailError");
  EXPECT_EQ(panel(2), "");
  EXPECT_EQ(program.accounts[2].AcntLastCheckText, "Not Checked") << "no further account is tried";
  EXPECT_TRUE(platform.asked.empty()) << "a stop is no failure, and counts as a check";
  EXPECT_FALSE(program.StopRequested);
  first.line.onReceive = nullptr;
  check();
  EXPECT_EQ(program.accounts[1].AcntStatusText, "Work - 3 Messages");
}

TEST_F(CheckCycle, AStopWhileConnectingWithNothingToFetchStillCounts) {
  auto& server = addAccount("Work");
  start();
  server.line.onReceive = [&] { stop(); };
  check();
  EXPECT_EQ(program.accounts[1].AcntStatusText, "Work - User Stopped Retrieval");
  EXPECT_TRUE(platform.asked.empty());
}

TEST_F(CheckCycle, CheckAllWithNothingToCheckSaysSo) {
  addAccount("Off", false);
  start();
  checkAll();
  ASSERT_EQ(platform.asked.size(), 1U);
  EXPECT_EQ(platform.asked[0].title, "Velmora - No Accounts Checked");
  EXPECT_EQ(platform.asked[0].text,
            "No Accounts were checked for messags!          \r\n\r\nOnly Enabled Accounts are checked with\r\n"
            "the Check All button.\r\n\r\nSee the Accounts page.\r\n");
  EXPECT_TRUE(platform.asked[0].icon == Question::Icon::Information);
  check();
  EXPECT_EQ(program.accounts[1].AcntStatusText, "Off - No Messages") << "a single check asks for no leave";
}

TEST_F(CheckCycle, ChecksOfTheUserHoldAutoCheckOffMeanwhile) {
  auto& server = addAccount("Work");
  option("UseInterval", "1");
  start();
  MainWindow& frmMain = program.frmMain;
  bool held = false;
  server.line.onReceive = [&] { held = !frmMain.tmrMailTime.Enabled && frmMain.tmrStatusBar.Enabled; };
  const auto ticking = [&] { return frmMain.tmrMailTime.Enabled && !frmMain.tmrStatusBar.Enabled; };
  using Check = void (*)(Program&);
  for (const auto& [walk, holds] : {std::pair<Check, bool>{CheckAllAccounts, true},
                                    {CheckCurrentAccount, true},
                                    {StartUpCheckAccounts, true},
                                    {AutoCheckAccounts, false}}) {
    held = false;
    walk(program);
    EXPECT_EQ(held, holds);
    EXPECT_TRUE(ticking());
  }
}

TEST_F(CheckCycle, TimedWalksTellWhatTheyFound) {
  addAccount("Work").messages = {message("a"), message("b")};
  addAccount("Off", false);
  addAccount("Home").messages = {message("h")};
  start();
  program.TotalMessages = 99;
  std::vector<int> tabs;
  platform.servers["Home"].line.onReceive = [&] { tabs.push_back(program.frmMain.TabStripEmail.SelectedItem()); };
  AutoCheckAccounts(program);
  EXPECT_EQ(program.AccountInfoText, "Account Information:\r\n      Work - 2 Messages\r\n      Home - 1 Message\r\n");
  EXPECT_EQ(program.AccountInfoLines, 2);
  EXPECT_EQ(program.TotalMessages, 3);
  EXPECT_EQ(program.TotalNew, 3);
  EXPECT_EQ(tabs.front(), 3) << "the tab follows the walk";
  EXPECT_EQ(program.frmMain.lvwEmail.Rows().size(), 2U);

  tabs.clear();
  program.frmMain.State = WindowState::Minimised;
  StartUpCheckAccounts(program);
  EXPECT_EQ(tabs.front(), 1) << "but not in a window that nobody sees";
  EXPECT_EQ(program.frmMain.lvwEmail.Rows().size(), 2U);
  EXPECT_EQ(program.TotalNew, 0);
  EXPECT_EQ(panel(4), "Auto Check Off");
}

struct Trouble {
  const char* what;
  void (*prepare)(MemoryServer&);
  std::int32_t number;
  const char* title;
  bool silencedOnConnect;
  bool silencedOnRetrieve;
};

class Failures : public CheckCycle, public testing::WithParamInterface<Trouble> {};

const char* const connecting = "Velmora - Error Establishing Connection";
const char* const processing = "Velmora - Error Processing Messages";

INSTANTIATE_TEST_SUITE_P(
    AtEveryStage, Failures,
    testing::Values(
        Trouble{"refused", [](MemoryServer& s) { s.line.connectFailure.emplace(10061, "refused"); }, 10061, connecting,
                false, false},
        Trouble{"timed out", [](MemoryServer& s) { s.line.connectFailure.emplace(10060, "late"); }, 10060, connecting,
                true, false},
        Trouble{"handshake", [](MemoryServer& s) { s.line.connectFailure.emplace(60000, "bad record"); }, 60000,
                connecting, false, false},
        Trouble{"no POP3", [](MemoryServer& s) { s.greeting = "220 mail ESMTP\r\n"; }, 30001, connecting, true, false},
        Trouble{"password", [](MemoryServer& s) { s.users["user"] = "other"; }, 30007, connecting, false, false},
        Trouble{"in use", [](MemoryServer& s) { s.answers["PASS"] = "-ERR [IN-USE] locked\r\n"; }, 30006, connecting,
                true, false},
        Trouble{"no message", [](MemoryServer& s) { s.answers["RETR"] = "-ERR gone\r\n"; }, 30013, processing, false,
                true},
        Trouble{"hangs up", [](MemoryServer& s) { s.answers["RETR"] = MemoryServer::hangUp; }, 30012, processing, false,
                true},
        Trouble{"silent", [](MemoryServer& s) { s.answers["RETR"] = MemoryServer::silence; }, 30014, processing, false,
                true}));

TEST_P(Failures, AreToldUnlessSilencedAndNeverEndTheWalk) {
  const Trouble& trouble = GetParam();
  auto& server = addAccount("Work");
  server.messages = {message("a")};
  addAccount("Home").messages = {message("h")};
  trouble.prepare(server);
  start();
  checkAll();
  ASSERT_EQ(platform.asked.size(), 1U) << trouble.what;
  EXPECT_EQ(platform.asked[0].title, trouble.title) << trouble.what;
  EXPECT_THAT(platform.asked[0].text, HasSubstr("Error Message:\r\n" + std::to_string(trouble.number) + " - "));
  EXPECT_EQ(program.accounts[1].AcntStatusText, "Work - Error Accessing Account") << trouble.what;
  EXPECT_EQ(program.accounts[2].AcntStatusText, "Home - 1 Message") << trouble.what;
  EXPECT_FALSE(server.line.open) << trouble.what;

  program.options.SuppressConnectErrors = 1;
  checkAll();
  EXPECT_EQ(platform.asked.size(), trouble.silencedOnConnect ? 1U : 2U) << trouble.what;
  program.options.SuppressConnectErrors = 0;
  program.options.SuppressRetrieveErrors = 1;
  platform.asked.clear();
  checkAll();
  EXPECT_EQ(platform.asked.size(), trouble.silencedOnRetrieve ? 0U : 1U) << trouble.what;
}

TEST_F(CheckCycle, APortThatIsNoNumberIsAnUnexpectedErrorAlsoAfterOneOfTheServers) {
  addAccount("Lost").users.clear();
  addAccount("Work");
  set("Settings/AcntPort2", "pop3");
  start();
  checkAll();
  ASSERT_EQ(platform.asked.size(), 2U);
  EXPECT_THAT(platform.asked[1].text, HasSubstr("13 - Type mismatch\r\n\r\nPlease report this error to Kestrum"));
  EXPECT_EQ(program.accounts[2].AcntStatusText, "Work - Error Accessing Account");
}

TEST_F(CheckCycle, MailboxesBeyondAllCountingAreToldAsOverflow) {
  addAccount("Work").answers["STAT"] = "+OK 32768 1000\r\n";
  start();
  check();
  ASSERT_EQ(platform.asked.size(), 1U);
  EXPECT_THAT(platform.asked[0].text, HasSubstr("6 - Overflow"));
}

TEST_F(CheckCycle, ChecksByHandNeverRunOutOfTotals) {
  addAccount("Work").messages = {message("a")};
  start();
  program.TotalMessages = program.TotalNew = 32767;
  check();
  EXPECT_TRUE(platform.asked.empty());
  EXPECT_EQ(program.accounts[1].AcntStatusText, "Work - 1 Message");
}

TEST_F(CheckCycle, ALostFetchIsToldAsSuchWhereTheDeadSessionHoldsTheMailbox) {
  auto& server = addAccount("Work");
  server.messages = {message("a"), message("b")};
  server.pipelining = true;
  server.answers["RETR 2"] = MemoryServer::hangUp;
  server.line.onConnect = [&] {
    if (server.line.connections > 1) server.answers["PASS"] = "-ERR [IN-USE] locked\r\n";
  };
  option("SuppressRetrieveErrors", "1");
  start();
  check();
  EXPECT_TRUE(platform.asked.empty()) << "30012 is silenced, whatever stands in the way of a new login";
  EXPECT_EQ(program.accounts[1].AcntStatusText, "Work - Error Accessing Account");
  EXPECT_GT(server.line.connections, 1);
}

TEST_F(CheckCycle, IncompleteAccountsAreNamedOnce) {
  addAccount("Work");
  addAccount("Home");
  start();
  program.accounts[1].AcntIncomplete = true;
  program.IncompleteAccounts = "Work\r\n";
  ReportIncompleteAccounts(program);
  ASSERT_EQ(platform.asked.size(), 1U);
  EXPECT_EQ(platform.asked[0].title, "Velmora - Message DownLoad Error");
  EXPECT_EQ(platform.asked[0].text,
            "The following Account may not have completely               \r\ndownloaded all messages.\r\nWork\r\n\r\n"
            "This may be due to a lost connection or a\r\nConnection TimeOut if the message was large.\r\n"
            "Try checking the Account again.\r\n\r\nIf the problem persits you could try increasing the\r\n"
            "Connection TimeOut in Program Options/Defaults.\r\n\r\nPlease Note: Before re-checking you may need to\r\n"
            "temporarily turn off 'Allow Quick Checking'.");
  ReportIncompleteAccounts(program);
  EXPECT_EQ(platform.asked.size(), 1U);
}

TEST_F(CheckCycle, AConnectionTestAlwaysReports) {
  auto& server = addAccount("Work");
  server.messages = {message("a")};
  option("SuppressConnectErrors", "1");
  start();
  program.TestInProgress = true;
  TestConnection(program, 1);
  EXPECT_EQ(panel(1), "Work") << "a test leaves the status bar alone";
  server.greeting = "-ERR go away\r\n";
  TestConnection(program, 1);
  EXPECT_THAT(titles(), ElementsAre("Velmora - Test Connection Successfull", "Velmora - Test Connection Failure"));
  EXPECT_EQ(platform.asked[0].text,
            "The Connection Succeeded.\r\n\r\nYou should be able to connect to your               \r\n"
            "Mail Server to check for messages.\r\n\r\n");
}

TEST_F(CheckCycle, QuittingInTheMiddleEndsWithoutAWord) {
  auto& server = addAccount("Work");
  server.messages = {message("a")};
  addAccount("Home");
  start();
  server.line.onReceive = [&] {
    if (program.PopClient) QuitApplication(program);
  };
  checkAll();
  EXPECT_TRUE(platform.hasQuit);
  EXPECT_TRUE(platform.asked.empty());
  EXPECT_EQ(platform.servers["Home"].line.connections, 0);
}

}  // namespace
}  // namespace velmora
