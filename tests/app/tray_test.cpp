#include "app/tray.h"

#include <gmock/gmock.h>

#include "app/decisions/tray_look.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::message;
using testing::ElementsAre;

Accounts checkedAccounts(std::initializer_list<Accounts::Row> rows) {
  Accounts accounts;
  accounts.ResizeAccounts(static_cast<std::int16_t>(rows.size()));
  accounts[0].AcntLastCheckText = "Checked: 4:21 PM on Nov 15/26";
  std::int16_t number = 0;
  for (const auto& row : rows) accounts[++number] = row;
  return accounts;
}

Accounts::Row account(std::int32_t colour, std::int16_t messages, std::int16_t isNew, bool connected = true) {
  Accounts::Row row;
  row.AcntColourIndex = colour;
  row.AcntChecked = true;
  row.AcntConnected = connected;
  row.AcntMsgCount = messages;
  row.AcntNewCount = isNew;
  return row;
}

TEST(TrayLook, CountsAsDigitsOnTheAccountsColour) {
  struct Case {
    Accounts::Row row;
    bool newOnly;
    TrayPicture picture;
  };
  const Case cases[] = {{account(1, 0, 0), false, {1, 40, 10}},  {account(6, 7, 2), false, {6, 40, 17}},
                        {account(6, 7, 2), true, {6, 40, 12}},   {account(2, 10, 0), false, {2, 30, 20}},
                        {account(2, 99, 42), true, {2, 33, 22}}, {account(3, 99, 0), false, {3, 38, 29}},
                        {account(3, 100, 3), true, {3, 40, 39}}, {account(5, 32767, 0), false, {5, 40, 39}},
                        {account(0, 1, 0), false, {5, 40, 11}},  {account(7, 1, 0), false, {5, 40, 11}}};
  for (const auto& c : cases) {
    EXPECT_EQ(trayLook(checkedAccounts({c.row}), c.newOnly, 1).picture, c.picture) << c.row.AcntMsgCount;
  }
}

TEST(TrayLook, WalksOverTheCheckedAccountsWithAPauseBetweenPasses) {
  Accounts::Row disabled = account(4, 1, 0);
  disabled.AcntEnabled = 0;
  const std::pair<Accounts, std::vector<int>> walks[] = {
      {checkedAccounts({account(1, 1, 0), account(2, 2, 0), account(3, 3, 0)}), {1, 2, 3, 7, 1, 2, 3, 7, 1}},
      {checkedAccounts({disabled, account(2, 2, 0, false), Accounts::Row{}, account(3, 3, 0)}), {2, 3, 7, 2, 3, 7}},
      {checkedAccounts({Accounts::Row{}, account(2, 2, 0), disabled}), {2, 7, 2, 7}},
      {checkedAccounts({disabled}), {7, 7, 7}}};
  for (const auto& [accounts, expected] : walks) {
    std::int16_t at = 0;
    std::vector<int> seen;
    while (seen.size() < expected.size()) {
      const TrayLook look = trayLook(accounts, false, at);
      at = look.nextAccount;
      seen.push_back(look.picture.front());
    }
    EXPECT_EQ(seen, expected);
  }
}

TEST(TrayLook, TheTipSumsUpTheAccountsThatWereReached) {
  const Accounts accounts = checkedAccounts({account(1, 20000, 1), account(1, 20000, 2), account(1, 5, 5, false)});
  EXPECT_EQ(trayLook(accounts, false, 0).tip, "Checked: 4:21 PM on Nov 15/26\r\n40000 Message(s) in 2 Account(s)")
      << "a tray takes no more";
  EXPECT_EQ(trayLook(accounts, true, 0).tip, "Checked: 4:21 PM on Nov 15/26\r\n3 New Message(s) in 2 Account(s)");
  const TrayLook none = trayLook(checkedAccounts({account(1, 5, 5, false)}), false, 1);
  EXPECT_EQ(none, (TrayLook{{8}, "No Connection has been established.", 1}));
  EXPECT_EQ(trayTip(std::string(62, 'x') + "\u00e4\u00f6"), std::string(62, 'x') + "\u00e4");
}

class TrayIconOfTheProgram : public test::RunningProgram {
 protected:
  void SetUp() override { addAccount("Work").messages = {message("a")}; }

  TrayIcon& icon() { return program.frmMain.TrayData; }
  TrayPicture picture() { return icon().Picture; }
  std::string tip() { return icon().Tip; }
  void second() { program.frmMain.tmrStatusBar.tick(); }
  std::vector<std::string> enabledEntries() {
    std::vector<std::string> texts;
    for (const MenuEntry* entry : program.frmMain.mnuTrayPopMenu.Entries) {
      const std::string& caption = entry->Caption;
      if (entry->Enabled && caption != "-") texts.push_back(caption.substr(caption.find('#') + 1));
    }
    return texts;
  }
};

TEST_F(TrayIconOfTheProgram, TellsOfTheMessagesOnlyWhileTheWindowIsAway) {
  start();
  checkAll();
  second();
  EXPECT_EQ(tip(), "Velmora");
  program.frmMain.Close();
  EXPECT_EQ(tip(), "Auto Check is Off");
  second();
  EXPECT_EQ(tip(), "Checked: 4:21 PM on Nov 15/26\r\n1 Message(s) in 1 Account(s).");
  icon().LeftButtonDown();
  EXPECT_THAT(picture(), ElementsAre(7));
  program.frmMain.mnuTrayAutoCheck.Click();
  EXPECT_THAT(picture(), ElementsAre(7));
  program.frmMain.Close();
  program.frmMain.tmrMailTime.tick();
  EXPECT_THAT(picture(), ElementsAre(7)) << "after the one account";
  program.frmMain.tmrMailTime.tick();
  EXPECT_THAT(picture(), ElementsAre(5, 40, 11));
  program.frmMain.mnuTrayAutoCheck.Click();
  EXPECT_THAT(picture(), ElementsAre(9));
}

TEST_F(TrayIconOfTheProgram, ItsMenuDoesWhatItSays) {
  platform.files = {"/client.exe"};
  option("DefaultClient", "/client.exe");
  start();
  MainWindow& frmMain = program.frmMain;
  frmMain.mnuTrayNewMessage.Click();
  frmMain.mnuTrayUpdates.Click();
  frmMain.mnuTrayRunClient.Click();
  frmMain.mnuTrayHelp.Click();
  EXPECT_THAT(platform.opened, ElementsAre(VELMORA_HOME_PAGE));
  EXPECT_THAT(platform.started, ElementsAre("/client.exe 3 mailto:", "/client.exe 3"));
  EXPECT_THAT(platform.helpShown, ElementsAre(100));
  for (MenuEntry* entry : {&frmMain.mnuTrayOptions, &frmMain.mnuTrayMenuColours, &frmMain.mnuTrayAbout}) {
    frmMain.tbrMainButtons["Rules"].click();
    frmMain.Close();
    entry->Click();
    EXPECT_TRUE(frmMain.Visible);
    EXPECT_EQ(program.CurrentPage, optionsPage);
    EXPECT_EQ(frmMain.lblBanner.Caption.get(), "Options");
    EXPECT_TRUE(frmMain.fraMain[optionsPage].Visible);
    EXPECT_FALSE(frmMain.fraMain[rulesPage].Visible);
  }
  frmMain.Close();
  frmMain.mnuTrayQuitApplication.Click();
  EXPECT_TRUE(platform.hasQuit);
}

TEST_F(TrayIconOfTheProgram, OffersDuringACheckOnlyWhatCanBeDone) {
  start();
  const auto all = enabledEntries();
  EXPECT_EQ(all.size(), 12U);
  std::vector<std::string> meanwhile;
  platform.servers["Work"].line.onReceive = [&] { meanwhile = enabledEntries(); };
  program.frmMain.mnuTrayCheckAll.Click();
  EXPECT_THAT(meanwhile, ElementsAre("Show", "AutoCheckOff", "Quit"));
  EXPECT_EQ(enabledEntries(), all);
}

TEST_F(TrayIconOfTheProgram, ItsSwitchesLeaveTheOrderThatAHeaderHasChosen) {
  start();
  checkAll();
  const std::int16_t order = program.options.SortOrder;
  for (int i = 0; i < 2; ++i) program.frmMain.lvwEmail.ColumnClick("Subject");
  ASSERT_NE(program.options.SortOrder, order);
  program.frmMain.mnuTraySounds.Click();
  EXPECT_NE(program.options.SortOrder, order);
}

TEST_F(TrayIconOfTheProgram, WithoutATrayItSaysSoOnce) {
  option("MinimizeStartUp", "1");
  program.frmMain.TrayData.TrayPresent = false;
  start();
  EXPECT_TRUE(platform.asked.empty()) << "the tray may come up after the program";
  program.frmMain.mnuTrayShow.Click();
  for (int i = 0; i < 2; ++i) {
    program.frmMain.Close();
    EXPECT_EQ(titles(), std::vector<std::string>{"Velmora - No System Tray"});
    program.frmMain.mnuTrayShow.Click();
  }
}

TEST_F(TrayIconOfTheProgram, WithoutATrayItSaysSoWhereTheDesktopBringsTheWindowBackAtOnce) {
  program.frmMain.TrayData.TrayPresent = false;
  start();
  platform.onYield = [this] { program.frmMain.State = WindowState::Normal; };
  program.frmMain.Close();
  EXPECT_EQ(titles(), std::vector<std::string>{"Velmora - No System Tray"});
  EXPECT_TRUE(program.frmMain.Visible);
}

}  // namespace
}  // namespace velmora
