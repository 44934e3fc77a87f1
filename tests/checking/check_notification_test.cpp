#include "checking/check_notification.h"

#include <gmock/gmock.h>

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
  using Sounds = std::vector<std::string>;

  /// Three accounts: with new mail, with a sound of its own; with mail that was there before; not reached.
  void SetUp() override {
    addAccount("New").messages = {message("a"), message("b")};
    addAccount("Old").messages = {message("c")};
    addAccount("Lost");
    for (int number = 1; number <= 3; ++number) {
      set("Settings/AcntSound" + std::to_string(number), "/" + std::to_string(number) + ".wav");
    }
    platform.files = {"/1.wav", "/2.wav", "/3.wav", "/all.wav"};
    option("SuppressConnectErrors", "1");
    option("UseInterval", "1");
  }

  void startWithOldMail() {
    start();
    program.frmMain.TabStripEmail.SelectTab(2);
    check();
    platform.servers.erase("Lost");
    platform.played.clear();
    platform.clock.hour = 17;
  }

  void second() { program.frmMessage.tmrMessage.tick(); }
  bool autoCheckRuns() { return program.frmMain.tmrMailTime.Enabled; }
  MessageWindow& window() { return program.frmMessage; }
};

TEST_F(Notification, WhatIsToldFollowsTheOption) {
  struct Case {
    std::int16_t ShowEmail;
    bool mail;
    const char* headline;
    Sounds sounds;
  };
  const Case cases[] = {{0, true, "2 New Message(s) found at 5:21 PM", {"/1.wav"}},
                        {0, false, nullptr, {}},
                        {1, true, "3 Message(s) found at 5:21 PM", {"/1.wav", "/2.wav"}},
                        {1, false, nullptr, {}},
                        {2, true, "3 Message(s) found at 5:21 PM", {"/1.wav", "/2.wav", "/home/Sounds/Error.wav"}},
                        {2, false, "No Message(s) found at 5:21 PM", {"/1.wav", "/2.wav", "/home/Sounds/Error.wav"}},
                        {3, true, nullptr, {}}};
  startWithOldMail();
  program.options.ShowEmailMsgBox = 1;
  for (const auto& c : cases) {
    program.options.ShowEmail = c.ShowEmail;
    platform.servers["New"].messages.clear();
    platform.servers["Old"].messages.clear();
    AutoCheckAccounts(program);
    frmMessage_Unload(program);
    if (c.mail) {
      platform.servers["Old"].messages = {message("c")};
      program.frmMain.TabStripEmail.SelectTab(2);
      check();
      platform.servers["New"].messages = {message("a"), message("b")};
    }
    platform.played.clear();
    AutoCheckAccounts(program);
    EXPECT_EQ(platform.played, c.sounds) << c.ShowEmail << c.mail;
    EXPECT_EQ(program.AutoMessageOpen, c.headline != nullptr) << c.ShowEmail << c.mail;
    if (program.AutoMessageOpen) {
      EXPECT_EQ(window().fraMsg.Caption.get(), c.headline);
    }
    frmMessage_Unload(program);
  }
}

TEST_F(Notification, OneSoundSpeaksForAllOrEachForItself) {
  startWithOldMail();
  program.options.ShowEmail = 2;
  const auto soundsOf = [this](std::int16_t account) {
    platform.played.clear();
    PlayCheckSound(program, account);
    return platform.played;
  };
  checkAll();
  program.accounts[1].AcntSoundOn = 0;
  EXPECT_THAT(soundsOf(0), ElementsAre("/2.wav", "/home/Sounds/Error.wav"));
  EXPECT_THAT(soundsOf(1), IsEmpty());
  EXPECT_THAT(soundsOf(2), ElementsAre("/2.wav"));
  program.accounts[2].AcntSoundValid = false;
  EXPECT_THAT(soundsOf(2), IsEmpty());

  program.options.DefaultSound = "/all.wav";
  FollowSoundOptions(program);
  EXPECT_THAT(soundsOf(0), ElementsAre("/all.wav")) << "once, and whatever the accounts' own switches say";
  program.accounts[1].AcntEnabled = program.accounts[2].AcntEnabled = 0;
  EXPECT_THAT(soundsOf(0), ElementsAre("/home/Sounds/Error.wav")) << "the first account decides, reached or not";
  EXPECT_THAT(soundsOf(2), ElementsAre("/all.wav"));
  program.accounts[3].AcntSoundOn = 0;
  EXPECT_THAT(soundsOf(0), IsEmpty());

  program.frmMain.mnuTraySounds.Click();
  EXPECT_EQ(program.frmMain.mnuTraySounds.Caption.get(), "Soun&ds - Off|#SoundOff");
  EXPECT_EQ(platform.tree.values["Settings\\Options/PlaySound"], "0");
  EXPECT_THAT(soundsOf(2), IsEmpty());

  option("DefaultSound", "/all.wav");
  option("PlaySound", "0");
  Program next(platform);
  ASSERT_TRUE(Main(next));
  EXPECT_TRUE(next.DefaultSoundValid);
  EXPECT_EQ(next.frmMain.mnuTraySounds.Caption.get(), "Soun&ds - Off|#SoundOff");
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
  EXPECT_THAT(platform.played, ElementsAre("/1.wav", "/2.wav", "/3.wav"));
  check();
  EXPECT_EQ(platform.played.back(), "/1.wav");
  EXPECT_FALSE(program.AutoMessageOpen);
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
  EXPECT_EQ(window().Caption.get(), "Velmora:  Auto Check - November 15, 2026");
  EXPECT_EQ(window().lblMsg.Caption.get(), program.AccountInfoText);
  EXPECT_EQ(window().LabelLines.get(), 3);
  EXPECT_EQ(window().lblAutoCheck.Caption.get(), "Next Auto Check at 4:52 PM");
  for (const auto* left : {"2", "1", "0"}) {
    EXPECT_EQ(window().lblMsgCountDown.Caption.get(), left);
    EXPECT_TRUE(window().Visible);
    second();
  }
  EXPECT_FALSE(window().Visible);
  EXPECT_TRUE(autoCheckRuns());

  AnnounceCheck(program, {true, true, 1, 1});
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
  EXPECT_TRUE(program.AutoMessageOpen);
}

TEST_F(Notification, ManyAccountsAreCutOffWithAWord) {
  EXPECT_EQ(messageText("15 lines", 15), "15 lines");
  EXPECT_EQ(messageLines(15), 15);
  EXPECT_EQ(messageText("16 lines", 16), "16 lines\r\nmore Accounts...");
  EXPECT_EQ(messageLines(16), 17);
}

TEST_F(Notification, TheMessageGoesAndComesWithTheMainWindowAndItsTimeRunsOn) {
  option("MsgBoxTime", "1");
  start();
  program.options.ShowEmailMsgBox = 1;
  for (const int seconds : {0, 2}) {
    AnnounceCheck(program, {true, true, 1, 1});
    program.frmMain.Close();
    EXPECT_FALSE(window().Visible);
    for (int i = 0; i < seconds; ++i) second();
    if (seconds > 0) {
      AnnounceCheck(program, {true, true, 1, 1});
      EXPECT_FALSE(window().HiddenWithMain) << "a new one finds its place and size anew";
      frmMessage_Unload(program);
    }
    program.frmMain.mnuTrayShow.Click();
    EXPECT_EQ(window().Visible.get(), seconds == 0);
    frmMessage_Unload(program);
  }
}

TEST_F(Notification, TimedChecksSoundWithoutTheMessageUntilSoundsAreSwitchedOff) {
  option("ShowEmail", "2");
  start();
  platform.onSound = [this] {
    if (platform.played.size() == 2) program.frmMain.mnuTraySounds.Click();
  };
  AutoCheckAccounts(program);
  EXPECT_THAT(platform.played, ElementsAre("/1.wav", "/2.wav"));
  EXPECT_FALSE(program.AutoMessageOpen);
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
    EXPECT_TRUE(IsEnding(next));
    EXPECT_FALSE(next.frmMessage.Visible);
    EXPECT_FALSE(next.frmMain.Visible);
    EXPECT_THAT(platform.played, IsEmpty());
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
