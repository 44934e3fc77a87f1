#include "accounts/accounts_page.h"

#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "app/tray.h"
#include "checking/check_cycle.h"
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

  /// The page shows an account that differs from its record, and can be left by a decision only.
  bool isDirty() {
    const bool dirty = program.AcntDirty;
    EXPECT_EQ(page().tbrButtons[saveAccountBar].Enabled, dirty);
    EXPECT_EQ(page().tbrButtons[cancelAccountBar].Enabled, dirty);
    EXPECT_EQ(page().tbrAcnts.Enabled, !dirty);
    EXPECT_EQ(page().tbrMainButtons.Enabled, !dirty);
    return dirty;
  }
};

TEST_F(AccountsPageTest, ANameThatIsBlankOrTakenIsRefused) {
  addAccount("Work");
  addAccount("Straße");
  open();
  struct Case {
    std::string name;
    Question refusal;
  };
  for (const auto& [name, refusal] :
       {Case{"",
             {"The Account Name box is blank. Please          \r\nre-enter a name for this Account.\r\n\r\n",
              "Blank Account Name", Question::Icon::Critical}},
        Case{"sTRAßE",
             {"The following Account Name is already used.          \r\nAccount Name: 'sTRAßE'\r\n\r\n"
              "Duplicate Account Names are not allowed.\r\nPlease re-enter a name for this Account.\r\n\r\n",
              "Duplicate Account Name", Question::Icon::Critical}}}) {
    platform.asked.clear();
    type(&AccountsPage::txtAcntName, name);
    save();
    EXPECT_THAT(platform.asked, ElementsAre(refusal));
    EXPECT_TRUE(isDirty());
    EXPECT_EQ(stored("AcntName1"), "Work");
  }
  type(&AccountsPage::txtAcntName, "wORK");
  save();
  EXPECT_EQ(stored("AcntName1"), "wORK") << "its own name in another case is free";
}

TEST_F(AccountsPageTest, ANewNameReachesTabsPanelAndRules) {
  addAccount("e").messages = {test::message("one")};
  platform.written["/home/Rules.ini"] = "[Rules]\nRuleCount=2\n[Rule1]\nAccount=e\n[Rule2]\nAccount=E\n";
  open();
  check();
  ASSERT_EQ(program.rules.live.RuleCount, 2);
  type(&AccountsPage::txtAcntName, "Reserve");
  save();
  EXPECT_EQ(tab(1), "Reserve  (1)");
  EXPECT_EQ(page().TabStripAcnts.Tabs(1).Caption.get(), "Reserve");
  EXPECT_EQ(panel(1), "Reserve - 1 Message") << "no letter of the old name elsewhere has gone";
  EXPECT_EQ(program.rules.live[1].Account + program.rules.live[2].Account, "ReserveE");
  EXPECT_EQ(program.rules.working[1].Account, "Reserve");
}

TEST_F(AccountsPageTest, AddTakesTheFirstFreeNameAndStartsAtNothing) {
  addAccount("New Account1");
  addAccount("new account3");
  open();
  press("AcntAdd");
  EXPECT_EQ(program.accounts.AcntCurrent, 3);
  EXPECT_EQ(stored("AcntNum") + stored("AcntName3") + stored("AcntPort3"), "3New Account2110");
  EXPECT_EQ(page().TabStripAcnts.SelectedItem(), 3);
  EXPECT_EQ(page().TabStripEmail.Tabs(3).Caption.get(), "New Account2");
  EXPECT_EQ(program.accounts[3].AcntLastCheckTime, "4:21:05 PM");
  EXPECT_EQ(panel(1) + "|" + panel(3), "New Account2|Not Checked");
  EXPECT_FALSE(isDirty());
}

TEST_F(AccountsPageTest, TheFirstAccountTakesTheBannerAwayAndTheLastOneBringsItBack) {
  set("Settings/FirstUse", "1");
  option("UseInterval", "1");
  option("EmailCheckStartUp", "1");
  open();
  EXPECT_TRUE(page().fraNoAcntsBanner.Visible);
  EXPECT_FALSE(page().fraAcnt.Visible);
  EXPECT_FALSE(page().tbrAcnts["AcntTest"].Enabled);
  press("AcntAdd");
  EXPECT_FALSE(page().fraNoAcntsBanner.Visible);
  EXPECT_TRUE(page().tbrAcnts["AcntTest"].Enabled);
  EXPECT_EQ(page().TabStripAcnts.Count() + page().TabStripEmail.Count(), 2);
  platform.answers = {Answer::Yes};
  press("AcntDelete");
  EXPECT_EQ(
      platform.asked.back().text,
      "You are about to delete the following Account...          \r\nAccount Name:  'New Account1'\r\n\r\n"
      "Please proceed with caution since this action\r\nis NOT reversible!\r\n\r\nWould you like to proceed?\r\n");
  EXPECT_TRUE(page().fraNoAcntsBanner.Visible);
  EXPECT_EQ(panel(1) + "|" + panel(3) + "|" + panel(4), "No Accounts have been created...||Auto Check Off");
  EXPECT_EQ(platform.tree.values["Settings\\Options/UseInterval"], "0");
  EXPECT_EQ(platform.tree.values["Settings\\Options/EmailCheckStartUp"], "0");
  EXPECT_FALSE(platform.tree.values.contains("Settings/AcntName1"));
}

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
  program.DefaultClientValid = program.DefaultSoundValid = true;
  program.frmMain.tbrMainButtons["Accounts"].click();
  EXPECT_EQ(page().txtAcntClient.Text.get(), "Using Default Email Client");
  EXPECT_EQ(page().txtAcntSound.Text.get(), "Using Default Sound File");
  EXPECT_EQ(page().lblClientName.Caption.get(), "Mail.EXE");
  EXPECT_FALSE(page().txtAcntClient.Enabled || page().txtAcntSound.Enabled || page().chkAcntSoundOn.Visible);
  EXPECT_EQ(page().lblAcntRunSize.Caption.get() + page().lblAcntPlaySound.Caption.get(), "Run: MaximizedSound: On");
  EXPECT_FALSE(isDirty());
  type(&AccountsPage::txtAcntServer, "elsewhere");
  save();
  EXPECT_EQ(stored("AcntServer1") + stored("AcntClient1") + stored("AcntSoundOn1"), "elsewhere/own.exe0");
}

TEST_F(AccountsPageTest, AChangedAccountIsLeftByOneOfThreeAnswers) {
  addAccount("Work").messages = {test::message("one")};
  addAccount("Home");
  open();
  struct Case {
    Answer answer;
    std::string name;
    std::int16_t current;
    std::string stored;
  };
  for (const auto& [answer, name, current, kept] :
       {Case{Answer::No, "Job", 1, "Work"}, Case{Answer::Cancel, "Job", 2, "Work"}, Case{Answer::Yes, "", 2, "Work"},
        Case{Answer::Yes, "Job", 2, "Job"}}) {
    page().TabStripAcnts.SelectTab(1);
    type(&AccountsPage::txtAcntName, name);
    platform.asked.clear();
    platform.answers = {answer};
    page().TabStripAcnts.SelectTab(2);
    EXPECT_EQ(program.accounts.AcntCurrent, current);
    EXPECT_EQ(page().TabStripAcnts.SelectedItem(), current);
    EXPECT_EQ(page().txtAcntName.Text.get(), current == 1 ? name : "Home");
    EXPECT_EQ(isDirty(), current == 1);
    EXPECT_EQ(stored("AcntName1"), kept);
    cancel();
  }
  EXPECT_EQ(platform.asked[0].text,
            "The changes made to the following Account\r\nhave not been saved.\r\nAccount Name: 'Work'\r\n\r\n"
            "How would you like to proceed?\r\n\r\n'Yes' to save the Account changes now.\r\n"
            "'No' to just return to the same Account.\r\n'Cancel' to discard all changes to this Account.          "
            "\r\n\r\n");
  EXPECT_EQ(platform.asked[0].title, "Changes Not Saved!");
}

TEST_F(AccountsPageTest, QuittingAsksAboutChangesButTheEndOfTheSessionDoesNot) {
  addAccount("Work");
  auto& home = addAccount("Home");
  option("CloseButton", "0");
  open();
  type(&AccountsPage::txtAcntName, "");
  CloseToTray(program);
  for (const Answer answer : {Answer::No, Answer::Yes}) {
    platform.answers = {answer};
    page().Close();
    EXPECT_FALSE(platform.hasQuit) << "he returns to it, or it can't be saved";
    EXPECT_TRUE(page().Visible && isDirty());
  }
  type(&AccountsPage::txtAcntName, "Job");
  home.line.onReceive = [&] {
    if (platform.hasQuit) return;
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
  open();
  program.accounts[2].AcntLastCheckText = "of the last";
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
  };
  press("AcntTest");
  EXPECT_EQ(yields, 2);
  EXPECT_THAT(titles(), ElementsAre("Velmora - Test Connection Successfull"));
  EXPECT_EQ(page().TabStripAcnts.Tabs(1).Image.get(), "MailNo");
  EXPECT_EQ(panel(3) + "|" + panel(4), "of the last|" + program.NextCheckText);
  EXPECT_TRUE(page().fraAcnt.Enabled && page().tmrMailTime.Enabled);
  EXPECT_FALSE(program.TestInProgress);
}

}  // namespace
}  // namespace velmora
