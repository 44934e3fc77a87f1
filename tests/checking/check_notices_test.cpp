#include "checking/check_notices.h"

#include <gmock/gmock.h>

#include "app/pages.h"
#include "app/shut_down.h"
#include "checking/check_cycle.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::message;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(NoticeTexts, TellTheRestByItsNumber) {
  const std::vector<std::string> five = {"1", "2", "3", "4", "5"};
  const std::string longName(50, 'n');
  const std::string cutName = std::string(40, 'n') + "…";
  const auto many = [](std::size_t n) { return std::vector<AccountNews>(n, {"A", 7, {"a", "b", "c", "d", "e"}}); };
  using Texts = std::vector<std::string>;
  const std::tuple<std::vector<AccountNews>, std::string, Texts, Texts> cases[] = {
      {{{"Work", 1, {"x"}}}, "Work: 1 new message", {"x"}, {}},
      {{{longName, 5, five}}, cutName + ": 5 new messages", five, {}},
      {{{"Work", 9, five}}, "Work: 9 new messages", {"1", "2", "3", "4", "and 5 more messages"}, {}},
      {{{"Work", 2, {}}}, "Work: 2 new messages", {}, {}},
      {{{"Work", 2, five}, {"Home", 1, {"h"}}},
       "3 new messages in 2 accounts",
       {"Work: 2 new messages", "1", "2", "Home: 1 new message", "h"},
       {"Home"}},
      {many(6),
       "42 new messages in 6 accounts",
       {"A: 7 new messages", "A: 7 new messages", "A: 7 new messages", "A: 7 new messages", "and 2 more accounts"},
       {"A", "A", "A"}}};
  for (const auto& [news, summary, lines, choices] : cases) {
    EXPECT_EQ(newsNotice(news), (Notice{Notice::Kind::New, summary, lines, choices}));
  }
  EXPECT_EQ(failuresNotice(std::vector<AccountFailure>{{longName, std::string(300, 'r')}}),
            (Notice{Notice::Kind::Failures,
                    "1 account could not be checked",
                    {cutName + ": " + std::string(200, 'r') + "…"},
                    {}}));
  EXPECT_EQ(failuresNotice(std::vector<AccountFailure>(6, {"A", "r"})).lines,
            Texts({"A: r", "A: r", "A: r", "A: r", "and 2 more accounts"}));
}

class CheckNotices : public test::RunningProgram {
 protected:
  void SetUp() override {
    addAccount("Off", false).messages = {message("o")};
    addAccount("Work").messages = {message("a"), message("b")};
    addAccount("Home").messages = {message("h")};
    option("UseInterval", "1");
  }

  std::vector<std::string> summaries() const {
    std::vector<std::string> result;
    for (const auto& [notice, events] : platform.shown) result.push_back(notice.summary);
    return result;
  }
  void choose(std::size_t choice) { platform.shown.front().second.chosen(choice); }
};

TEST_F(CheckNotices, TellWhatIsNewToWhomDoesNotSeeIt) {
  option("NotifyNew", "1");
  start();
  check();
  checkAll();
  EXPECT_THAT(platform.shown, IsEmpty()) << "the user looks on";
  platform.servers["Work"].messages.push_back(message("c", "From: <b>\r\n"));
  AutoCheckAccounts(program);
  AutoCheckAccounts(program);
  EXPECT_THAT(summaries(), ElementsAre("Work: 1 new message")) << "nor what was there before";
  EXPECT_THAT(platform.shown.front().first.lines, ElementsAre("<b>: c"));
  program.frmMain.State = WindowState::Minimised;
  platform.servers["Home"].messages.push_back(message("i"));
  program.frmMain.mnuTrayCheckAll.Click();
  EXPECT_THAT(summaries(), ElementsAre("Work: 1 new message", "Home: 1 new message"));
  EXPECT_EQ(platform.noticesSought, 0) << "which is for failures";
}

TEST_F(CheckNotices, LeadToTheAccountThatBearsTheNameNow) {
  option("NotifyNew", "1");
  start();
  program.frmMain.State = WindowState::Minimised;
  AutoCheckAccounts(program);
  EXPECT_THAT(summaries(), ElementsAre("3 new messages in 2 accounts"));
  GoToPage(program, rulesPage);
  std::swap(program.accounts[1].AcntName, program.accounts[3].AcntName);
  const auto turnsTo = [&](std::size_t choice) {
    ShowTabAnew(program, 2);
    program.frmMain.State = WindowState::Minimised;
    choose(choice);
    EXPECT_EQ(program.frmMain.State, WindowState::Normal);
    return program.accounts.AcntCurrent;
  };
  program.unsaved.RulesDirty = true;
  EXPECT_EQ(turnsTo(1), 2);
  program.unsaved.RulesDirty = false;
  platform.asking = true;
  EXPECT_EQ(turnsTo(1), 2);
  platform.asking = false;
  program.activity = Activity::Deleting;
  EXPECT_EQ(turnsTo(1), 2);
  program.activity = Activity::Idle;
  EXPECT_EQ(program.CurrentPage, rulesPage) << "until nothing is in the way";
  EXPECT_EQ(turnsTo(1), 1);
  EXPECT_EQ(program.CurrentPage, emailPage);
  program.accounts[1].AcntName = "Other";
  EXPECT_EQ(turnsTo(1), 2);
  EndApplication(program);
  program.frmMain.State = WindowState::Minimised;
  choose(0);
  EXPECT_EQ(program.frmMain.State, WindowState::Minimised);
}

TEST_F(CheckNotices, FailuresAreCollectedWhereTheUserWantsThatAndTheDesktopCan) {
  using Check = void (*)(Program&);
  const std::tuple<const char*, bool, Check, std::size_t> cases[] = {{"0", true, AutoCheckAccounts, 2},
                                                                     {"1", false, AutoCheckAccounts, 2},
                                                                     {"1", true, CheckAllAccounts, 2},
                                                                     {"1", true, StartUpCheckAccounts, 0},
                                                                     {"1", true, AutoCheckAccounts, 0}};
  for (const char* name : {"Work", "Home"}) platform.servers[name].line.connectFailure.emplace(10061, "no\r\nway");
  for (const auto& [wanted, there, check, boxes] : cases) {
    option("NotifyFailures", wanted);
    platform.noticesThere = there;
    platform.asked.clear();
    platform.shown.clear();
    Program next(platform);
    ASSERT_TRUE(Main(next));
    check(next);
    EXPECT_EQ(platform.asked.size(), boxes) << wanted << there;
    EXPECT_EQ(platform.shown.size(), boxes == 0 ? 1U : 0U);
    EXPECT_EQ(platform.noticesSought > 0, wanted == std::string("1"));
  }
  EXPECT_THAT(platform.shown.front().first.lines, ElementsAre("Work: 10061 - no\r\nway", "Home: 10061 - no\r\nway"));
}

TEST_F(CheckNotices, AFailureThatCouldNotBeShownComesInItsBoxOnceNothingIsInTheWay) {
  option("NotifyFailures", "1");
  start();
  platform.servers["Work"].line.connectFailure.emplace(10061, "refused");
  program.accounts[3].AcntIncomplete = true;
  platform.servers["Home"].messages.clear();
  program.accounts[3].AcntEnabled = 0;
  AutoCheckAccounts(program);
  EXPECT_THAT(summaries(), ElementsAre("2 accounts could not be checked"));
  platform.shown.front().second.notShown();
  const auto tick = [&] { program.frmMain.tmrMailTime.tick(); };
  platform.asking = true;
  tick();
  platform.asking = false;
  program.activity = Activity::Checking;
  tick();
  program.activity = Activity::Idle;
  EXPECT_THAT(titles(), IsEmpty());
  tick();
  tick();
  EXPECT_THAT(titles(), ElementsAre("Velmora - Error Establishing Connection", "Velmora - Message DownLoad Error"));
  platform.servers["Work"].line.connectFailure.reset();
  platform.withdrawn.clear();
  checkAll();
  EXPECT_THAT(platform.withdrawn, IsEmpty());
  AutoCheckAccounts(program);
  EXPECT_THAT(platform.withdrawn, ElementsAre(Notice::Kind::Failures));
}

}  // namespace
}  // namespace velmora
