#include "checking/check_cycle.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "checking/pop_session.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::MemoryServer;
using test::message;
using testing::ElementsAre;
using testing::HasSubstr;

class CheckCycle : public test::RunningProgram {};

TEST_F(CheckCycle, ShowsHowFarItHasComeAndOffersOnlyToStop) {
  auto& server = addAccount("Work");
  server.messages = {message("a"), message("b"), message("c")};
  server.line.chunk = 40;
  server.line.pace = pop::Milliseconds(60);
  start();
  MainWindow& frmMain = program.frmMain;
  frmMain.tbrMainButtons["Rules"].click();
  std::set<std::string> progress;
  std::vector<std::string> frames;
  server.line.onReceive = [&] {
    frmMain.tmrRetrieveMessage.tick();
    frames.push_back(tabImage(1));
    for (const Frame* frame : {&frmMain.fraMainButtons, &frmMain.fraEmailToolBar, &frmMain.fraAcntToolBar}) {
      EXPECT_FALSE(frame->Enabled);
    }
    for (const TabStrip* strip : {&frmMain.TabStripEmail, &frmMain.TabStripAcnts}) EXPECT_FALSE(strip->Enabled);
    for (const std::size_t bar : {emailHelpBar, closeBar, checkAllBar, startClientBar}) {
      EXPECT_FALSE(frmMain.tbrButtons[bar].Enabled);
    }
    EXPECT_TRUE(frmMain.tbrButtons[stopRetrievalBar].Enabled && frmMain.tbrButtons[stopRetrievalBar].Visible);
    EXPECT_TRUE(frmMain.fraMain[emailPage].Visible) << "a check brings the Email page forward";
    if (!frmMain.tmrRetrieveMessage.Enabled || !panel(3).ends_with("% Complete")) return;
    EXPECT_TRUE(frmMain.Pointer == MousePointer::Hourglass);
    EXPECT_TRUE(frmMain.ProgressBar.Visible);
  };
  frmMain.StatusBar.Panels(4).Text.watch([&](const std::string& text) { progress.insert(text); });
  checkAll();
  EXPECT_EQ(frames.at(0) + frames.at(1), "MailSpin8MailSpin7") << "it turns backwards";
  EXPECT_THAT(progress, testing::IsSupersetOf({"Retrieving... (1 of 3)", "Retrieving... (3 of 3)"}));
  EXPECT_FALSE(progress.contains("Retrieving... (4 of 3)"));
  EXPECT_FALSE(frmMain.ProgressBar.Visible || frmMain.tbrButtons[stopRetrievalBar].Visible);
  EXPECT_FALSE(frmMain.fraMain[emailPage].Visible);
  EXPECT_FALSE(frmMain.tmrRetrieveMessage.Enabled);
  EXPECT_TRUE(frmMain.Pointer == MousePointer::Default);
}

TEST_F(CheckCycle, EndsWithTheCountWhereThatIsAsBefore) {
  MemoryServer& work = addAccount("Work");
  work.pipelining = true;
  work.messages = {test::message("a")};
  start();
  const auto asksFor = [&](const std::string& command) {
    work.commands.clear();
    check();
    return std::ranges::count(work.commands, command);
  };
  EXPECT_EQ(asksFor("LIST"), 1);
  EXPECT_EQ(asksFor("LIST"), 0) << "a listing may take megabytes";
  EXPECT_EQ(work.commands.back(), "QUIT");
  work.messages.push_back(test::message("b"));
  EXPECT_EQ(asksFor("RETR 2"), 1);
  EXPECT_EQ(tab(1), "Work  (2)");
}

TEST_F(CheckCycle, ProgressNeverPassesItsTotal) {
  addAccount("Work");
  start();
  program.connection.ReceivedCount = 1;
  auto events = makePopEvents(program);
  platform.servers["Work"].messages = {message("a")};
  check();
  events->Progress(*program.connection.PopClient, 300, 200);
  EXPECT_EQ(program.frmMain.ProgressBar.Value.get(), 200);
  EXPECT_EQ(panel(3), "100 % Complete");
  events->Progress(*program.connection.PopClient, 25, 200);
  EXPECT_EQ(panel(3), "12 % Complete") << "half to even";
  events->Progress(*program.connection.PopClient, 0, 0);
  EXPECT_EQ(panel(3), "100 % Complete");
}

TEST_F(CheckCycle, StopEndsTheFetchAndTheWalk) {
  auto& first = addAccount("Work");
  first.messages = {message("a"), message("b"), message("c")};
  first.line.chunk = 30;
  first.line.pace = pop::Milliseconds(60);
  addAccount("Home").messages = {message("h")};
  start();
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
  EXPECT_EQ(program.accounts[1].AcntStatusText, "Work - User Stopped Retrieval");
  EXPECT_EQ(tabImage(1), "MailError");
  EXPECT_EQ(panel(2), "");
  EXPECT_EQ(program.accounts[2].AcntLastCheckText, "Not Checked") << "no further account is tried";
  EXPECT_TRUE(platform.asked.empty()) << "a stop is no failure, and counts as a check";
  EXPECT_FALSE(program.connection.StopRequested);
  first.line.onReceive = nullptr;
  check();
  EXPECT_EQ(program.accounts[1].AcntStatusText, "Work - 3 Messages");
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
  program.walk.TotalMessages = 99;
  std::vector<int> tabs;
  platform.servers["Home"].line.onReceive = [&] { tabs.push_back(program.frmMain.TabStripEmail.SelectedItem()); };
  AutoCheckAccounts(program);
  EXPECT_EQ(program.walk.AccountInfoText,
            "Account Information:\r\n      Work - 2 Messages\r\n      Home - 1 Message\r\n");
  EXPECT_EQ(program.walk.AccountInfoLines, 2);
  EXPECT_EQ(program.walk.TotalMessages, 3);
  EXPECT_EQ(program.walk.TotalNew, 3);
  EXPECT_EQ(tabs.front(), 3) << "the tab follows the walk";
  EXPECT_EQ(program.frmMain.lvwEmail.Rows().size(), 2U);

  tabs.clear();
  program.frmMain.State = WindowState::Minimised;
  StartUpCheckAccounts(program);
  EXPECT_EQ(tabs.front(), 1) << "but not in a window that nobody sees";
  EXPECT_EQ(program.frmMain.lvwEmail.Rows().size(), 2U);
  EXPECT_EQ(program.walk.TotalNew, 0);
  EXPECT_EQ(panel(4), "Auto Check Off");
}

TEST_F(CheckCycle, FailuresAreToldUnlessTheirKindIsSilenced) {
  addAccount("refused").line.connectFailure.emplace(10061, "refused");
  addAccount("timed out").line.connectFailure.emplace(10060, "late");
  addAccount("handshake").line.connectFailure.emplace(60000, "bad record");
  addAccount("no POP3").greeting = "220 mail ESMTP\r\n";
  addAccount("password").users["user"] = "other";
  addAccount("in use").answers["PASS"] = "-ERR [IN-USE] locked\r\n";
  const std::string answers[] = {"-ERR gone\r\n", MemoryServer::hangUp, MemoryServer::silence};
  for (const auto& answer : answers) {
    auto& server = addAccount("fetch " + std::to_string(&answer - answers));
    server.messages = {message("a")};
    server.answers["RETR"] = answer;
  }
  start();
  const auto toldOf = [this](std::int16_t suppressConnect, std::int16_t suppressRetrieve) {
    program.options.SuppressConnectErrors = suppressConnect;
    program.options.SuppressRetrieveErrors = suppressRetrieve;
    platform.asked.clear();
    checkAll();
    std::vector<std::string> names;
    for (const auto& question : platform.asked) {
      const auto begin = question.text.find("Account: ") + 9;
      names.push_back(question.text.substr(begin, question.text.find("   ") - begin));
    }
    return names;
  };
  EXPECT_EQ(toldOf(0, 0).size(), 9U);
  EXPECT_THAT(toldOf(1, 0), ElementsAre("refused", "handshake", "password", "fetch 0", "fetch 1", "fetch 2"));
  EXPECT_THAT(toldOf(0, 1), ElementsAre("refused", "timed out", "handshake", "no POP3", "password", "in use"));
  for (const auto& [name, server] : platform.servers) EXPECT_FALSE(server.line.open) << name;
}

}  // namespace
}  // namespace velmora
