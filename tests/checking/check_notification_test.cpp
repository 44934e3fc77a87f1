#include "checking/check_notification.h"

#include <gmock/gmock.h>

#include <memory>

#include "accounts/decisions/account_list.h"
#include "app/shut_down.h"
#include "checking/check_cycle.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::message;
using testing::ElementsAre;
using testing::IsEmpty;

class Notification : public test::RunningProgram {
 protected:
  /// Three accounts with a sound each. The last has no mail.
  void SetUp() override {
    addAccount("New").messages = {message("a"), message("b")};
    addAccount("Old").messages = {message("c")};
    addAccount("Empty");
    for (const std::string number : {"1", "2", "3"}) {
      set("Settings/AcntSound" + number, "/" + number + ".wav");
      platform.files.insert("/" + number + ".wav");
    }
    option("UseInterval", "1");
  }

  void second() { program.frmMessage.tmrMessage.tick(); }
  bool autoCheckRuns() { return program.frmMain.tmrMailTime.Enabled; }
  CheckMessageWindow& window() { return program.frmMessage; }
};

TEST_F(Notification, WhatIsToldFollowsTheOption) {
  const WalkFindings fresh{true, true, 3, 2};
  const WalkFindings old{false, true, 1, 0};
  const WalkFindings nothing;
  const std::tuple<std::int16_t, WalkFindings, const char*> cases[] = {
      {0, fresh, "2 New Message(s) found at 4:21 PM"}, {0, old, ""},     {1, fresh, "3 Message(s) found at 4:21 PM"},
      {1, old, "1 Message(s) found at 4:21 PM"},       {1, nothing, ""}, {2, old, "1 Message(s) found at 4:21 PM"},
      {2, nothing, "No Message(s) found at 4:21 PM"},  {3, fresh, ""}};
  start();
  program.options.ShowEmailMsgBox = 1;
  for (const auto& [ShowEmail, found, headline] : cases) {
    program.options.ShowEmail = ShowEmail;
    AnnounceCheck(program, found);
    EXPECT_EQ(program.frmMessage.AutoMessageOpen ? window().fraMsg.Caption.get() : "", headline) << ShowEmail;
    frmMessage_Unload(program);
  }
}

TEST_F(Notification, SoundsCanBeSwitchedOff) {
  option("ShowEmail", "2");
  start();
  program.frmMain.mnuTraySounds.Click();
  EXPECT_EQ(program.frmMain.mnuTraySounds.Caption.get(), "Soun&ds - Off|#SoundOff");
  EXPECT_EQ(platform.tree.values["Settings\\Options/PlaySound"], "0");
  checkAll();
  Program next(platform);
  ASSERT_TRUE(Main(next));
  EXPECT_EQ(next.frmMain.mnuTraySounds.Caption.get(), "Soun&ds - Off|#SoundOff");
  CheckAllAccounts(next);
  EXPECT_THAT(platform.played, IsEmpty());
}

/// 1 has new mail, 2 only old, 3 none; 4, which has new mail, is off, and 5 is silent.
TEST(SoundingAccounts, AreThoseWhoseFindingsAreTold) {
  Accounts accounts;
  accounts.ResizeAccounts(5);
  for (const auto number : std::to_array<std::int16_t>({1, 4, 5})) accounts[number].AcntHasNew = true;
  for (const auto number : std::to_array<std::int16_t>({1, 2, 4, 5})) accounts[number].AcntHasMessages = true;
  accounts[4].AcntEnabled = accounts[5].AcntSoundOn = 0;
  const auto sounding = [&](std::int16_t account, std::int16_t ShowEmail, bool oneForAll = false) {
    return soundingAccounts(accounts, account, ShowEmail, oneForAll);
  };
  EXPECT_THAT(sounding(0, 0), ElementsAre(1));
  EXPECT_THAT(sounding(0, 1), ElementsAre(1, 2));
  EXPECT_THAT(sounding(0, 2), ElementsAre(1, 2, 3));
  EXPECT_THAT(sounding(0, 3), IsEmpty());
  EXPECT_THAT(sounding(4, 0), ElementsAre(4)) << "which the user checked";
  EXPECT_THAT(sounding(5, 0), IsEmpty());
  EXPECT_THAT(sounding(2, 0), IsEmpty());
  EXPECT_THAT(sounding(5, 0, true), IsEmpty()) << "one for all is for a walk";
  accounts[1].AcntHasNew = false;
  EXPECT_THAT(sounding(0, 0, true), ElementsAre(5)) << "whatever its own is";
}

TEST_F(Notification, EachSoundIsTheDefaultOneOrTheAccountsOrThatOfAFailure) {
  option("ShowEmail", "2");
  set("Settings/AcntSound2", "/gone.wav");
  platform.servers.erase("Empty");
  start();
  checkAll();
  EXPECT_THAT(platform.played, ElementsAre("/1.wav", "/home/Sounds/Error.wav"));
  program.options.DefaultSound = "/default.wav";
  platform.files.insert("/default.wav");
  for (const auto account : std::to_array<std::int16_t>({1, 3})) {
    platform.played.clear();
    program.frmMain.TabStripEmail.SelectTab(account);
    check();
    EXPECT_THAT(platform.played, ElementsAre(account == 1 ? "/default.wav" : "/home/Sounds/Error.wav"));
  }
  platform.played.clear();
  program.accounts[1].AcntServer = "Nowhere";
  program.accounts[1].AcntSoundOn = 0;
  checkAll();
  EXPECT_THAT(platform.played, IsEmpty()) << "the first speaks for all, and is silent about failures";
  platform.asked.clear();
  for (std::int16_t i = 1; i <= 3; ++i) program.accounts[i].AcntEnabled = 0;
  checkAll();
  EXPECT_THAT(titles(), ElementsAre("Velmora - No Accounts Checked"));
}

TEST_F(Notification, ChecksByHandSoundButShowNoMessage) {
  option("ShowEmailMsgBox", "1");
  option("ShowEmail", "2");
  start();
  platform.onSound = [this] {
    EXPECT_TRUE(program.frmMain.fraMainButtons.Enabled);
    EXPECT_FALSE(autoCheckRuns());
  };
  checkAll();
  EXPECT_EQ(platform.played.size(), 3U);
  EXPECT_FALSE(program.frmMessage.AutoMessageOpen);
}

TEST_F(Notification, TheMessageHoldsAutoCheckAndClosesByItself) {
  option("ShowEmailMsgBox", "1");
  option("MsgBoxTime", "2");
  option("PlaySound", "0");
  start();
  StartUpCheckAccounts(program);
  EXPECT_TRUE(window().Visible);
  EXPECT_TRUE(window().AlwaysOnTop);
  EXPECT_FALSE(autoCheckRuns());
  EXPECT_EQ(window().lblAutoCheck.Caption.get(), "Next Auto Check at 4:52 PM");
  for (const auto* left : {"2", "1", "0"}) {
    EXPECT_EQ(window().lblMsgCountDown.Caption.get(), left);
    EXPECT_TRUE(window().Visible);
    second();
  }
  EXPECT_FALSE(window().Visible);
  EXPECT_TRUE(autoCheckRuns());

  auto starts = std::make_shared<int>(0);
  window().tmrMessage.Enabled.watch([starts](bool on) { *starts += on ? 1 : 0; });
  for (int i = 0; i < 2; ++i) AnnounceCheck(program, {true, true, 1, 1});
  EXPECT_EQ(*starts, 2) << "its first second is a whole one";
  second();
  EXPECT_TRUE(window().Visible) << "its time begins anew";
  for (const bool byButton : {true, false}) {
    program.options.MsgBoxTime = 0;
    AnnounceCheck(program, {true, true, 1, 1});
    EXPECT_FALSE(window().lblMsgCountDown.Visible);
    second();
    EXPECT_TRUE(window().Visible);
    byButton ? window().tbrButtons["Close"].click() : window().Close();
    EXPECT_FALSE(window().Visible);
    EXPECT_TRUE(autoCheckRuns());
  }
}

TEST_F(Notification, WhatADisabledAccountHasFromBeforeIsTold) {
  set("Settings/AcntEnabled1", "0");
  option("ShowEmailMsgBox", "1");
  start();
  check();
  platform.servers["Old"].messages.clear();
  AutoCheckAccounts(program);
  EXPECT_TRUE(program.frmMessage.AutoMessageOpen);
}

TEST_F(Notification, ManyAccountsAreCutOffWithAWord) {
  const std::string word = "\r\nmore Accounts...";
  std::string first = "Heading";
  for (int i = 0; i < 15; ++i) first += "\r\nAccount";
  EXPECT_EQ(accountList(first + "\r\n", 15), first + "\r\n");
  EXPECT_EQ(accountListLines(15), 15);
  EXPECT_EQ(shownOfAccountList(first + "\r\n", 1), first);
  for (const std::string more : {"\r\nAccount\r\n", "\r\nAccount\r\nAccount\r\nAccount\r\n"}) {
    EXPECT_EQ(accountList(first + more, 16), first + more + word);
    EXPECT_EQ(shownOfAccountList(first + more + word, 1), first + "\r\n" + word);
  }
  EXPECT_EQ(accountListLines(16), 17);
}

TEST_F(Notification, TimedChecksSoundWithoutTheMessageUntilSoundsAreSwitchedOff) {
  option("ShowEmail", "2");
  start();
  platform.onSound = [this] {
    if (platform.played.size() == 2) program.frmMain.mnuTraySounds.Click();
  };
  AutoCheckAccounts(program);
  EXPECT_THAT(platform.played, ElementsAre("/1.wav", "/2.wav"));
  EXPECT_FALSE(program.frmMessage.AutoMessageOpen);
}

TEST_F(Notification, QuittingInTheMiddleTellsNothingAndStartsNothing) {
  option("ShowEmailMsgBox", "1");
  option("ShowEmail", "2");
  option("Minutes", "0");
  for (const bool inFetch : {false, true}) {
    Program next(platform);
    ASSERT_TRUE(Main(next));
    AnnounceCheck(next, {true, true, 1, 1});
    platform.played.clear();
    bool quits = false;
    auto& line = platform.servers["Old"].line;
    line.pace = pop::Milliseconds(60);
    line.onReceive = [&] {
      const std::string& progress = next.frmMain.StatusBar.Panels(4).Text;
      if (quits || (inFetch && !progress.starts_with("Retrieving... (1"))) return;
      quits = true;
      QuitApplication(next);
    };
    AutoCheckAccounts(next);
    EXPECT_EQ(next.activity, Activity::Ending);
    EXPECT_FALSE(next.frmMessage.Visible);
    EXPECT_FALSE(next.frmMain.Visible);
    EXPECT_TRUE(platform.asked.empty() && platform.played.empty());
    const int connections = line.connections;
    for (Timer* timer : {&next.frmMain.tmrMailTime, &next.frmMain.tmrMailStartUp}) {
      timer->Enabled = true;
      timer->tick();
    }
    EXPECT_EQ(line.connections, connections);
  }
}

}  // namespace
}  // namespace velmora
