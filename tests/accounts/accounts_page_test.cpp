#include "accounts/accounts_page.h"

#include <gmock/gmock.h>

#include "accounts/decisions/account_texts.h"
#include "app/shut_down.h"
#include "app/tray.h"
#include "checking/check_cycle.h"
#include "rules/save_rules.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using testing::ElementsAre;

class AccountsPageTest : public test::RunningProgram {
 protected:
  void press(const char* key) { page().tbrAcnts[key].click(); }
  void save() { program.frmMain.tbrButtons[saveAccountBar]["SaveAccount"].click(); }
  void cancel() { program.frmMain.tbrButtons[cancelAccountBar]["Cancel"].click(); }
  void type(TextBox AccountsPage::*box, const std::string& text) { (page().*box).Text = text; }

  void open() {
    start();
    program.frmMain.tbrMainButtons["Accounts"].click();
  }

  MainWindow& page() { return program.frmMain; }
  std::string stored(const std::string& key) { return platform.tree.values["Settings/" + key]; }
};

TEST_F(AccountsPageTest, AValidDefaultHidesTheAccountsOwnPathsAndKeepsThem) {
  addAccount("Work");
  platform.files = {"/apps/Mail.EXE", "/own.exe", "C:\\Sounds\\ding.wav"};
  set("Settings/AcntClient1", "/own.exe");
  set("Settings/AcntSound1", "C:\\Sounds\\ding.wav");
  set("Settings/AcntSoundOn1", "0");
  open();
  EXPECT_EQ(page().lblClientName.Caption.get() + page().lblSoundName.Caption.get(), "own.exeding.wav");
  EXPECT_TRUE(page().chkAcntSoundOn.Visible);
  EXPECT_FALSE(page().lblAcntPlaySound.Visible);
  type(&AccountsPage::txtAcntSound, "/gone.wav");
  EXPECT_EQ(page().lblSoundName.Caption.get(), "");
  EXPECT_FALSE(page().chkAcntSoundOn.Visible);
  cancel();
  program.options.DefaultClient = "/apps/Mail.EXE";
  program.options.DefaultSound = "C:\\Sounds\\ding.wav";
  platform.files.insert({"/apps/Mail.EXE", "C:\\Sounds\\ding.wav"});
  LoadOptionsPage(program);
  program.frmMain.tbrMainButtons["Accounts"].click();
  EXPECT_EQ(page().txtAcntClient.Text.get(), "Using Default Email Client");
  EXPECT_EQ(page().txtAcntSound.Text.get(), "Using Default Sound File");
  EXPECT_EQ(page().lblClientName.Caption.get(), "Mail.EXE");
  EXPECT_FALSE(page().txtAcntClient.Enabled || page().txtAcntSound.Enabled || page().chkAcntSoundOn.Visible);
  EXPECT_EQ(page().lblAcntRunSize.Caption.get() + page().lblAcntPlaySound.Caption.get(), "Run: MaximizedSound: On");
  EXPECT_FALSE(program.unsaved.AcntDirty);
  type(&AccountsPage::txtAcntServer, "elsewhere");
  save();
  EXPECT_EQ(stored("AcntServer1") + stored("AcntClient1") + stored("AcntSoundOn1"), "elsewhere/own.exe0");
}

TEST_F(AccountsPageTest, WhatCannotBeKeptIsToldAndNotDone) {
  for (const auto* name : {"One", "Two"}) addAccount(name);
  open();
  const auto saveRules = [this] {
    platform.canWriteFiles = false;
    program.rules.working.Show = 1;
    EXPECT_FALSE(WriteRules(program, "/home/Rules.ini") || program.rules.live.Show == 1);
  };
  const std::vector<std::pair<std::string, std::function<void()>>> operations = {
      {"No Account was added.", [this] { press("AcntAdd"); }},
      {"The Account was not deleted.", [this] { press("AcntDelete"); }},
      {"The Account was not moved.", [this] { page().tbrMoveButtons["Forward"].click(); }},
      {"The Rules were not saved.", saveRules},
      {"The Options hold until Velmora ends", [this] { page().mnuTraySounds.Click(); }},
      {"The Account was not saved.", [this] { save(); }},
      {"The Account was not saved.", [this] { page().TabStripAcnts.SelectTab(2); }},
  };
  platform.tree.Keep();
  platform.tree.refusal = "Disk full";
  const auto before = platform.tree.values;
  for (const auto& [loss, run] : operations) {
    platform.answers = {Answer::Yes, Answer::Yes};
    if (loss == "The Account was not saved.") type(&AccountsPage::txtAcntName, "Three");
    run();
    EXPECT_THAT(platform.asked.back().text, testing::StartsWith(loss));
    EXPECT_EQ(platform.tree.values, before) << loss;
    EXPECT_EQ(program.accounts.AcntNum(), 2) << loss;
    EXPECT_EQ(tab(1) + tab(2) + program.accounts[1].AcntName + program.accounts[2].AcntName, "OneTwoOneTwo") << loss;
    EXPECT_EQ(page().TabStripAcnts.SelectedItem(), 1) << loss;
  }
  EXPECT_TRUE(program.unsaved.AcntDirty);
  EXPECT_EQ(page().txtAcntName.Text.get(), "Three");
  platform.tree.refusal.reset();
  save();
  EXPECT_EQ(stored("AcntName1"), "Three");
  EXPECT_FALSE(program.unsaved.AcntDirty);
}

TEST_F(AccountsPageTest, ANewNameTakesThePlaceOfTheOldOneAndOfNoLetterElsewhere) {
  addAccount("e").messages = {test::message("one")};
  platform.written["/home/Rules.ini"] =
      "[Rules]\nRuleCount=2\n[Rule1]\nAccount=e\nDescCount=0\n[Rule2]\nAccount=All Accounts\nDescCount=0\n";
  open();
  check();
  program.rules.working[1].Account = "e";
  const auto rename = [this](const char* name) {
    type(&AccountsPage::txtAcntName, name);
    save();
    return program.rules.live[1].Account + "|" + program.rules.live[2].Account;
  };
  EXPECT_EQ(rename("Reserve"), "Reserve|All Accounts");
  EXPECT_EQ(program.rules.working[1].Account, "Reserve");
  EXPECT_EQ(tab(1), "Reserve  (1)");
  EXPECT_EQ(panel(1), "Reserve - 1 Message");
  rename("All Accounts");
  EXPECT_EQ(rename("e"), "Reserve|All Accounts") << "a rule for all is nobody's";
}

TEST_F(AccountsPageTest, WithoutTheLastAccountNothingChecksByItself) {
  addAccount("Work");
  option("UseInterval", "1");
  option("EmailCheckStartUp", "1");
  open();
  EXPECT_TRUE(page().tmrMailTime.Enabled && page().tmrMailStartUp.Enabled);
  platform.answers = {Answer::Yes};
  press("AcntDelete");
  EXPECT_FALSE(page().tmrMailTime.Enabled || page().tmrMailStartUp.Enabled);
  EXPECT_TRUE(page().tmrStatusBar.Enabled);
  EXPECT_EQ(panel(4), "Auto Check Off");
  for (const auto* key : {"UseInterval", "EmailCheckStartUp"})
    EXPECT_EQ(platform.tree.values["Settings\\Options/" + std::string(key)], "0");
}

TEST_F(AccountsPageTest, QuittingInACheckAsksAboutChangesButTheEndOfTheSessionDoesNot) {
  addAccount("Work");
  auto& home = addAccount("Home");
  option("CloseButton", "0");
  open();
  type(&AccountsPage::txtAcntName, "Job");
  CloseToTray(program);
  platform.answers = {Answer::No};
  page().Close();
  EXPECT_TRUE(page().Visible && !platform.hasQuit) << "the user returns to it";
  home.line.onReceive = [&] {
    if (platform.hasQuit) return;
    type(&AccountsPage::txtAcntServer, "from outside");
    EXPECT_EQ(page().txtAcntName.Text.get() + page().txtAcntServer.Text.get(), "JobWork") << "not those of Home";
    platform.answers = {Answer::Yes};
    QuitApplication(program);
  };
  AutoCheckAccounts(program);
  EXPECT_TRUE(platform.hasQuit);
  EXPECT_EQ(stored("AcntName1") + stored("AcntName2"), "JobHome");

  Program next(platform);
  Main(next);
  platform.asked.clear();
  next.frmMain.tbrMainButtons["Accounts"].click();
  next.frmMain.txtAcntName.Text = "Unsaved";
  EndApplication(next);
  EXPECT_TRUE(platform.asked.empty());
  EXPECT_EQ(stored("AcntName1"), "Job");
}

TEST_F(AccountsPageTest, ATestStaysOnThePageAndTellsOfTheLastAccountsCheck) {
  addAccount("Work");
  addAccount("Last");
  option("UseInterval", "1");
  option("SuppressConnectErrors", "1");
  open();
  program.accounts[2].AcntLastCheckText = "of the last";
  program.connection.StopRequested = true;  // by whoever stopped the last check
  int yields = 0;
  platform.onYield = [&] {
    if (++yields > 1) return;
    EXPECT_FALSE(page().fraAcnt.Enabled || page().fraAcntToolBar.Enabled || page().TabStripAcnts.Enabled);
    EXPECT_TRUE(page().fraMain[accountsPage].Visible);
    EXPECT_FALSE(page().tbrButtons[stopRetrievalBar].Visible);
    EXPECT_FALSE(page().tmrMailTime.Enabled);
    page().tmrRetrieveMessage.Enabled = true;
    page().tmrRetrieveMessage.tick();
    EXPECT_EQ(page().TabStripAcnts.Tabs(1).Image.get().substr(0, 8), "MailSpin");
    EXPECT_EQ(panel(1), "Work") << "nothing is being stopped";
  };
  press("AcntTest");
  EXPECT_EQ(yields, 2);
  EXPECT_THAT(titles(), ElementsAre("Velmora - Test Connection Successfull"));
  EXPECT_EQ(page().TabStripAcnts.Tabs(1).Image.get(), "MailNo");
  EXPECT_EQ(panel(3) + "|" + panel(4), "of the last|" + program.autoCheck.NextCheckText);
  EXPECT_TRUE(page().fraAcnt.Enabled && page().tmrMailTime.Enabled);
  EXPECT_EQ(program.activity, Activity::Idle);
  platform.servers["Work"].messages = {test::message("a")};
  platform.servers["Work"].answers["UIDL"] = "-ERR unknown\r\n";
  press("AcntTest");
  EXPECT_EQ(titles().back(), "Velmora - Test Connection Successfull");
  EXPECT_THAT(platform.servers["Work"].commands, testing::Not(testing::Contains(testing::StartsWith("TOP"))));
  for (const auto* port : {"", "abc", "0", "65536", "99999999999"}) {
    type(&AccountsPage::txtAcntPort, port);
    EXPECT_EQ(page().lblAcntPortNotice.Caption.get(), badPort);
    save();
    EXPECT_EQ(stored("AcntPort1"), port) << "it can be saved all the same";
    press("AcntTest");
    EXPECT_THAT(platform.asked.back().text, testing::HasSubstr("The Port must be a number from 1 to 65535"));
  }
  type(&AccountsPage::txtAcntPort, "65535");
  EXPECT_EQ(page().lblAcntPortNotice.Caption.get(), "");
  save();
  platform.servers["Work"].greeting = "-ERR go away\r\n";
  press("AcntTest");
  EXPECT_EQ(titles().back(), "Velmora - Test Connection Failure") << "nothing silences a test";
}

}  // namespace
}  // namespace velmora
