#include "rules/rule_report.h"

#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "checking/auto_check.h"
#include "checking/check_cycle.h"
#include "messages/message_list.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::message;
using testing::ElementsAre;

class RuleReport : public test::RunningProgram {
 protected:
  /// Every mailbox holds d, s and k: to delete, spam, and to keep.
  void SetUp() override {
    platform.written["/home/Rules.ini"] =
        "[Rules]\nRuleCount=2\nShow=1\nTime=3\n"
        "[Rule1]\nAction=1\nDescCount=1\nDescription1=Subject Equals d\n"
        "[Rule2]\nAction=2\nDescCount=1\nDescription1=Subject Equals s\n";
    option("MessageSort", "0");
    option("UseInterval", "1");
  }

  void serve(const std::string& name, const std::vector<std::string>& subjects = {"d", "s", "k"}) {
    auto& server = addAccount(name);
    for (const auto& subject : subjects) server.messages.push_back(message(subject));
  }

  RuleReportWindow& window() { return program.frmRuleReport; }
  void press(const char* button) { window().tbrRuleReport[button].click(); }
  bool canDelete() { return window().tbrRuleReport["DeleteNow"].Enabled; }
  std::string secondsShown() { return window().lblRuleReportCountDown.Caption; }
};

TEST_F(RuleReport, TellsWhichAccountsHaveMarks) {
  serve("Home", {"d", "k"});
  serve("Work", {"s", "d", "d"});
  serve("Club", {"k"});
  start();
  checkAll();
  EXPECT_FALSE(program.frmMain.tmrMailTime.Enabled) << "no timed check runs under it";
  EXPECT_EQ(window().lblRuleDelete.Caption.get(), "Home has 1 message\r\nWork has 2 messages\r\n");
  EXPECT_EQ(window().lblRuleSpam.Caption.get(), "Work has 1 message\r\n");
  EXPECT_EQ(window().LabelLines.get(), 2);
  for (const int tab : {1, 2}) {
    window().TabStripRuleReport.SelectTab(tab);
    EXPECT_TRUE(window().lblRuleDelete.Visible == (tab == 1) && window().imgRuleDelete.Visible == (tab == 1));
    EXPECT_TRUE(window().lblRuleSpam.Visible == (tab == 2) && window().imgRuleSpam.Visible == (tab == 2));
  }
  press("Exit");
  EXPECT_TRUE(program.frmMain.tmrMailTime.Enabled);
  EXPECT_EQ(program.accounts[2].AcntDeleteCount, 2) << "what wasn't deleted can still be";
  checkAll();
  EXPECT_EQ(window().TabStripRuleReport.SelectedItem(), 1);
  frmRuleReport_Unload(program);
  SuspendAutoCheck(program, TimerAction::Suspend);
  frmRuleReport_Unload(program);
  EXPECT_FALSE(program.frmMain.tmrMailTime.Enabled) << "it was closed already";
}

TEST_F(RuleReport, OpensAfterEveryKindOfCheckIfTheRulesWantIt) {
  serve("Home", {"d"});
  serve("Work", {"d"});
  start();
  struct Case {
    std::int16_t show, showNew;
    bool firstHasNew, secondHasNew;
    bool opens;
  };
  const Case cases[] = {{1, 0, false, false, true}, {0, 0, true, true, false}, {1, 1, true, false, true},
                        {1, 1, false, true, false}, {1, 2, true, true, false}, {2, 0, true, true, false}};
  const std::vector<void (*)(Program&)> checks = {CheckAllAccounts, CheckCurrentAccount, AutoCheckAccounts,
                                                  StartUpCheckAccounts};
  for (const auto& c : cases) {
    program.rules.live.Show = c.show;
    program.rules.live.ShowNew = c.showNew;
    for (const auto& run : checks) {
      // The count that growth is measured against makes messages new or not.
      program.accounts[1].AcntPrevCount = c.firstHasNew ? 0 : 1;
      program.accounts[2].AcntPrevCount = c.secondHasNew ? 0 : 1;
      run(program);
      EXPECT_EQ(program.frmRuleReport.RuleReportOpen, c.opens)
          << c.show << c.showNew << c.firstHasNew << c.secondHasNew;
      press("Exit");
    }
  }
}

TEST_F(RuleReport, SizesItselfByTheAccounts) {
  start();
  program.accounts.ResizeAccounts(40);
  program.rules.live.Show = 1;
  const auto saysMore = [](const Label& label) { return label.Caption.get().ends_with("\r\n\r\nmore Accounts..."); };
  for (const auto& [deletions, spam, lines] :
       {std::tuple{0, 1, 1}, {3, 2, 3}, {15, 15, 15}, {16, 2, 17}, {2, 40, 17}}) {
    for (std::int16_t number = 1; number <= 40; ++number) {
      program.accounts[number].AcntDeleteCount = number <= deletions ? 2 : 0;
      program.accounts[number].AcntSpamCount = number <= spam ? 2 : 0;
    }
    ShowRuleReport(program);
    EXPECT_EQ(window().LabelLines.get(), lines);
    EXPECT_EQ(saysMore(window().lblRuleDelete), deletions > 15) << deletions;
    EXPECT_EQ(saysMore(window().lblRuleSpam), spam > 15) << spam;
    EXPECT_EQ(window().lblRuleDelete.Caption == "No Messages to Delete", deletions == 0);
    frmRuleReport_Unload(program);
  }
}

TEST_F(RuleReport, ClosesOneTickAfterItsTime) {
  serve("Home");
  start();
  checkAll();
  std::vector<std::string> shown;
  const auto tick = [&] {
    window().tmrRuleReport.tick();
    shown.push_back(secondsShown());
  };
  tick();
  press("Timer");
  EXPECT_EQ(window().tbrRuleReport["Timer"].Caption.get(), "Start Timer  ");
  tick();
  press("Timer");
  EXPECT_EQ(window().tbrRuleReport["Timer"].Caption.get(), "Stop Timer   ");
  tick();
  tick();
  EXPECT_TRUE(program.frmRuleReport.RuleReportOpen);
  EXPECT_THAT(shown, ElementsAre("2", "2", "1", "0"));
  tick();
  EXPECT_FALSE(program.frmRuleReport.RuleReportOpen);
}

TEST_F(RuleReport, AFailureOfTheProgramsOwnRestoresEverything) {
  serve("Home");
  serve("Work");
  start();
  checkAll();
  program.frmMain.TabStripEmail.SelectTab(2);
  program.accounts[1].AcntMsgCount = 3000;
  press("DeleteNow");
  ASSERT_EQ(titles(), std::vector<std::string>{"Velmora - Unknown Error"});
  EXPECT_EQ(program.accounts.AcntCurrent, 2);
  EXPECT_FALSE(canDelete());
  EXPECT_TRUE(program.frmMain.tbrButtons[checkAllBar].Enabled);
}

TEST_F(RuleReport, StaysOutOfTheWayOfWhatIsUnderWay) {
  serve("Home");
  start();
  checkAll();
  bool seen = false;
  platform.servers["Home"].line.onReceive = [&] {
    EXPECT_FALSE(canDelete()) << "one connection at a time";
    window().TabStripRuleReport.SelectTab(2);
    window().TabStripRuleReport.SelectTab(1);
    EXPECT_FALSE(canDelete());
    seen = true;
  };
  check();
  EXPECT_TRUE(seen);
  EXPECT_TRUE(canDelete());
  EXPECT_TRUE(program.frmMain.tmrMailTime.Enabled) << "the check has let Auto Check go on";

  // It closes in the middle of its own deletion.
  platform.servers["Home"].line.onReceive = [&] {
    EXPECT_FALSE(program.frmMain.tmrMailTime.Enabled);
    window().Close();
    EXPECT_FALSE(program.frmMain.tmrMailTime.Enabled) << "no timed check while a deletion runs";
    EXPECT_FALSE(program.frmMain.tbrButtons[stopRetrievalBar].Visible);
  };
  press("DeleteNow");
  EXPECT_FALSE(window().Visible);
  EXPECT_TRUE(program.frmMain.tmrMailTime.Enabled);
  EXPECT_THAT(onServer("Home"), ElementsAre("s", "k"));
}

TEST_F(RuleReport, KeepsAboveTheOtherTimedWindow) {
  serve("Home");
  start();
  program.frmMessage.AutoMessageOpen = true;
  program.frmMessage.AlwaysOnTop = true;
  checkAll();
  EXPECT_TRUE(window().AlwaysOnTop);
  EXPECT_FALSE(program.frmMessage.AlwaysOnTop);
  window().Close();
  EXPECT_TRUE(program.frmMessage.AlwaysOnTop);
  window().AlwaysOnTop = false;
  window().Activate();
  EXPECT_TRUE(window().AlwaysOnTop);
  checkAll();
  QuitApplication(program);
  EXPECT_FALSE(window().Visible);
  ShowRuleReport(program);
  EXPECT_FALSE(window().Visible) << "a check that the end has cut off opens nothing";
}

}  // namespace
}  // namespace velmora
