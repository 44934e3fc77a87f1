#include "checking/check_notices.h"

#include <gmock/gmock.h>

#include "app/pages.h"
#include "app/shut_down.h"
#include "checking/check_cycle.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::message;

/// All that it says, line by line, and the buttons.
std::string told(const Notice& notice) {
  std::string text = notice.summary;
  for (const std::string& line : notice.lines) text += "\n" + line;
  for (const std::string& choice : notice.choices) text += " [" + choice + "]";
  return text;
}

TEST(NoticeTexts, TellTheRestByItsNumber) {
  const std::vector<std::string> five = {"1", "2", "3", "4", "5"};
  using News = std::vector<AccountNews>;
  const std::pair<News, std::string> cases[] = {
      {{{"A", 1, {"x"}}}, "A: 1 new message\nx"},
      {{{"A", 9, five}}, "A: 9 new messages\n1\n2\n3\n4\nand 5 more messages"},
      {{{"A", 2, five}, {"B", 1, five}},
       "3 new messages in 2 accounts\nA: 2 new messages\n1\n2\nB: 1 new message\n1 [B]"},
      {News(6, {"A", 1, five}),
       "6 new messages in 6 accounts\nA: 1 new message\nA: 1 new message\nA: 1 new message\n"
       "A: 1 new message\nand 2 more accounts [A] [A] [A]"}};
  for (const auto& [news, text] : cases) EXPECT_EQ(told(newsNotice(news)), text);
  EXPECT_EQ(told(failuresNotice(std::vector<AccountFailure>{{std::string(50, 'n'), std::string(300, 'r')}})),
            "1 account could not be checked\n" + std::string(40, 'n') + "…: " + std::string(200, 'r') + "…");
}

class CheckNotices : public test::RunningProgram {
 protected:
  void SetUp() override {
    addAccount("Off", false).messages = {message("o")};
    addAccount("Work").messages = {message("a"), message("b")};
    addAccount("Home").messages = {message("h")};
    option("UseInterval", "1");
    option("NotifyNew", "1");
  }

  std::string last() const { return told(platform.shown.back().first); }
};

TEST_F(CheckNotices, TellOfMailThatComesAfterOtherMailHasGone) {
  start();
  AutoCheckAccounts(program);
  platform.shown.clear();
  auto& messages = platform.servers["Work"].messages;
  messages = {message("b")};
  AutoCheckAccounts(program);
  EXPECT_TRUE(platform.shown.empty()) << "whatever its place is now";
  messages = {message("b"), message("c")};
  AutoCheckAccounts(program);
  ASSERT_EQ(platform.shown.size(), 1U);
  EXPECT_TRUE(last().starts_with("Work: 1 new message\n")) << last();
}

TEST_F(CheckNotices, TellWhatIsNewToWhomDoesNotSeeIt) {
  start();
  check();
  checkAll();
  EXPECT_TRUE(platform.shown.empty()) << "the user looks on";
  platform.servers["Work"].messages.push_back(message("c", "From: <b>\r\n"));
  AutoCheckAccounts(program);
  AutoCheckAccounts(program);
  EXPECT_EQ(platform.shown.size(), 1U);
  EXPECT_EQ(last(), "Work: 1 new message\n<b>: c") << "and nothing that was there before";
  program.frmMain.State = WindowState::Minimised;
  platform.servers["Home"].messages.push_back(message("i"));
  program.frmMain.mnuTrayCheckAll.Click();
  EXPECT_EQ(last(), "Home: 1 new message\na@example.org: i");
  EXPECT_EQ(platform.noticesSought, 0) << "which is for failures";
}

TEST_F(CheckNotices, LeadToTheAccountThatBearsTheNameNow) {
  start();
  AutoCheckAccounts(program);
  GoToPage(program, rulesPage);
  std::swap(program.accounts[1].AcntName, program.accounts[3].AcntName);
  const auto comesUp = [this] {
    program.frmMain.State = WindowState::Minimised;
    platform.shown.front().second.chosen(1);
    return program.frmMain.State == WindowState::Normal;
  };
  for (bool* inTheWay : {&program.unsaved.RulesDirty, &program.unsaved.AcntDirty, &platform.asking}) {
    *inTheWay = true;
    EXPECT_TRUE(comesUp());
    *inTheWay = false;
  }
  program.activity = Activity::Deleting;
  EXPECT_TRUE(comesUp());
  program.activity = Activity::Idle;
  EXPECT_EQ(program.CurrentPage, rulesPage) << "until nothing is in the way";
  EXPECT_TRUE(comesUp());
  EXPECT_EQ(program.CurrentPage, emailPage);
  EXPECT_EQ(program.accounts.AcntCurrent, 1);
  program.accounts[1].AcntName = "Other";
  ShowTabAnew(program, 2);
  EXPECT_TRUE(comesUp());
  EXPECT_EQ(program.accounts.AcntCurrent, 2);
  EndApplication(program);
  EXPECT_FALSE(comesUp());
}

TEST_F(CheckNotices, FailuresAreCollectedWhereTheUserWantsThatAndTheDesktopCan) {
  const std::tuple<const char*, bool, void (*)(Program&), bool> cases[] = {{"0", true, AutoCheckAccounts, false},
                                                                           {"1", false, AutoCheckAccounts, false},
                                                                           {"1", true, CheckAllAccounts, false},
                                                                           {"1", true, StartUpCheckAccounts, true}};
  for (const char* name : {"Work", "Home"}) platform.servers[name].line.connectFailure.emplace(10061, "no");
  for (const auto& [wanted, there, check, collected] : cases) {
    option("NotifyFailures", wanted);
    platform.noticesThere = there;
    platform.asked.clear();
    Program next(platform);
    ASSERT_TRUE(Main(next));
    check(next);
    EXPECT_EQ(platform.asked.size(), collected ? 0U : 2U) << wanted << there;
    EXPECT_EQ(platform.shown.empty(), !collected);
    EXPECT_EQ(platform.noticesSought > 0, wanted == std::string("1"));
  }
  EXPECT_EQ(last(), "2 accounts could not be checked\nWork: 10061 - no\nHome: 10061 - no");
}

TEST_F(CheckNotices, AFailureThatCouldNotBeShownComesInItsBoxOnceNothingIsInTheWay) {
  option("NotifyFailures", "1");
  start();
  platform.servers["Work"].line.connectFailure.emplace(10061, "no");
  program.accounts[1].AcntIncomplete = true;
  AutoCheckAccounts(program);
  EXPECT_EQ(last(), "2 accounts could not be checked\nWork: 10061 - no\nOff: may lack some of its messages");
  platform.shown.back().second.notShown();
  platform.asking = true;
  program.frmMain.tmrMailTime.tick();
  platform.asking = false;
  EXPECT_TRUE(platform.asked.empty());
  for (int i = 0; i < 2; ++i) program.frmMain.tmrMailTime.tick();
  EXPECT_THAT(titles(),
              testing::ElementsAre("Velmora - Error Establishing Connection", "Velmora - Message DownLoad Error"));
}

}  // namespace
}  // namespace velmora
