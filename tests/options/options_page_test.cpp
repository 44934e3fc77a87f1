#include "options/options_page.h"

#include <gmock/gmock.h>

#include "app/decisions/shortcuts.h"
#include "app/shut_down.h"
#include "options/decisions/button_style.h"
#include "options/save_options.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OptionsPageOfTheProgram : public test::RunningProgram {
 protected:
  using Changes = std::map<std::string, std::string>;

  void openPage() {
    addAccount("Work");
    start();
    page.tbrMainButtons["Options"].click();
  }
  void save() { page.tbrButtons[saveOptionsBar]["SaveOptions"].click(); }
  void cancel() { page.tbrButtons[cancelOptionsBar]["Cancel"].click(); }

  /// What has changed in the options of the settings tree since the last call.
  Changes changes() {
    Changes found;
    for (const auto& [path, value] : platform.tree.values) {
      const std::string section = "Settings\\Options/";
      if (path.starts_with(section) && known_[path] != value) found[path.substr(section.size())] = value;
    }
    known_ = platform.tree.values;
    return found;
  }

  MainWindow& page = program.frmMain;

 private:
  Changes known_;
};

TEST_F(OptionsPageOfTheProgram, EachControlSetsItsOption) {
  openPage();
  SaveOptions(program);
  changes();
  const auto tick = [](CheckBox OptionsPage::*box) {
    return [box](MainWindow& main) { (main.*box).Value = static_cast<std::int16_t>(1 - (main.*box).Value.get()); };
  };
  const auto type = [](NumberBox OptionsPage::*box, const char* text) {
    return [=](MainWindow& main) { (main.*box).Type(text); };
  };
  const auto choose = [](OptionGroup OptionsPage::*group, std::int16_t number) {
    return [=](MainWindow& main) { (main.*group).Choose(number); };
  };
  const std::pair<std::function<void(MainWindow&)>, Changes> cases[] = {
      {tick(&OptionsPage::chkRunStartUp), {{"RunStartUp", "0"}}},
      {tick(&OptionsPage::chkEmailCheckStartUp), {{"EmailCheckStartUp", "1"}}},
      {type(&OptionsPage::txtStartUpDelay, "7"), {{"StartUpDelay", "7"}}},
      {tick(&OptionsPage::chkMinimizeStartUp), {{"MinimizeStartUp", "1"}}},
      {tick(&OptionsPage::chkUseInterval), {{"UseInterval", "1"}}},
      {type(&OptionsPage::txtHours, "2"), {{"Hours", "2"}}},
      {type(&OptionsPage::txtMinutes, "45"), {{"Minutes", "45"}}},
      {tick(&OptionsPage::chkNoCheck), {{"NoCheck", "1"}}},
      {[](MainWindow& main) { main.txtNoCheckTime[0].Text = "22:00"; }, {{"NoCheckTimeBegin", "22:00"}}},
      {[](MainWindow& main) { main.txtNoCheckTime[1].Text = "06:30"; }, {{"NoCheckTimeEnd", "06:30"}}},
      {tick(&OptionsPage::chkShowEmailMsgBox), {{"ShowEmailMsgBox", "1"}}},
      {choose(&OptionsPage::optShowEmail, 3), {{"ShowEmail", "2"}}},
      {type(&OptionsPage::txtMsgBoxTime, "60"), {{"MsgBoxTime", "59"}}},
      {[](MainWindow& main) { main.txtDefaultClient.Text = "/a b.exe"; }, {{"DefaultClient", "/a b.exe"}}},
      {choose(&OptionsPage::optRunSize, 1), {{"RunSize", "1"}}},
      {[](MainWindow& main) { main.txtDefaultSound.Text = "/a.wav"; }, {{"DefaultSound", "/a.wav"}}},
      {tick(&OptionsPage::chkPlaySound), {{"PlaySound", "0"}}},
      {type(&OptionsPage::txtConnectTimeOut, ""), {{"ConnectTimeOut", "1"}}},
      {tick(&OptionsPage::chkQuickCheck), {{"QuickCheck", "0"}}},
      {tick(&OptionsPage::chkDeleteConfirmation), {{"DeleteConfirmation", "0"}}},
      {tick(&OptionsPage::chkCloseButton), {{"CloseButton", "0"}}},
      {tick(&OptionsPage::chkSuppressConnectErrors), {{"SuppressConnectErrors", "1"}}},
      {tick(&OptionsPage::chkSuppressRetrieveErrors), {{"SuppressRetrieveErrors", "1"}}},
      {choose(&OptionsPage::opt3DTheme, 1),
       {{"DTheme", "0"}, {"TopColour", "16766894"}, {"MiddleColour", "16777215"}, {"BottomColour", "16744448"}}},
      {tick(&OptionsPage::chkShowNewOnly), {{"ShowNewOnly", "1"}}},
      {tick(&OptionsPage::chkRestoreColWidth), {{"RestoreColWidth", "0"}}},
      {tick(&OptionsPage::chkButtonStyle), {{"ButtonStyle", "1"}}},
      {choose(&OptionsPage::optApplyStyle, 4), {{"ApplyStyle", "3"}}},
      {[](MainWindow& main) { main.tbrOptMisc[0]["SelectNone"].click(); },
       {{"FromToolTips", "0"}, {"ToToolTips", "0"}, {"SubjectToolTips", "0"}}},
      {tick(&OptionsPage::chkSubjectToolTips), {{"SubjectToolTips", "1"}}},
      {[](MainWindow& main) { main.tbrOptMisc[0]["SelectAll"].click(); }, {{"FromToolTips", "1"}, {"ToToolTips", "1"}}},
      {choose(&OptionsPage::optSortColumn, 1), {{"SortColumn", "0"}}},
      {choose(&OptionsPage::optSortOrder, 1), {{"SortOrder", "0"}}},
      {tick(&OptionsPage::chkMessageSort), {{"MessageSort", "0"}}},
  };
  for (const auto& [change, expected] : cases) {
    const std::string what = expected.begin()->first;
    change(page);
    EXPECT_TRUE(program.unsaved.OptionsDirty && page.tbrButtons[saveOptionsBar].Enabled) << what;
    EXPECT_FALSE(page.tbrMainButtons.Enabled) << what;
    cancel();
    EXPECT_FALSE(program.unsaved.OptionsDirty) << what;
    EXPECT_THAT(changes(), IsEmpty()) << what;
    change(page);
    save();
    EXPECT_EQ(changes(), expected);
    EXPECT_FALSE(program.unsaved.OptionsDirty) << what;
  }
}

TEST_F(OptionsPageOfTheProgram, KeepsTheIntervalBetweenOneMinuteAndTwelveHours) {
  const struct {
    const char* hours;
    const char* minutes;
    std::string typedHours, typedMinutes;  ///< "-" for nothing typed
    std::string shown;                     ///< hours and minutes, and the bounds of the minutes
  } cases[] = {
      {"0", "30", "13", "-", "12:0 0-0"},  {"12", "0", "0", "-", "0:1 1-59"},    {"1", "30", "0", "-", "0:30 1-59"},
      {"12", "0", "11", "-", "11:0 0-59"}, {"1", "0", "", "-", "0:1 1-59"},      {"0", "30", "-", "0", "0:0 1-59"},
      {"0", "30", "-", "", "0:1 1-59"},    {"3", "30", "-", "", "3:0 0-59"},     {"3", "30", "-", "60", "3:59 0-59"},
      {"12", "30", "-", "7", "12:0 0-0"},  {"20", "99", "-", "-", "20:99 0-59"}, {"3", "30", "x", "4x", "3:30 0-59"},
  };
  for (const auto& [hours, minutes, typedHours, typedMinutes, shown] : cases) {
    platform.tree.values.clear();
    option("UseInterval", "1");
    option("Hours", hours);
    option("Minutes", minutes);
    Program fresh(platform);
    ASSERT_TRUE(Main(fresh));
    MainWindow& main = fresh.frmMain;
    EXPECT_FALSE(fresh.unsaved.OptionsDirty) << "nothing is corrected that nobody has touched";
    if (typedHours != "-") main.txtHours.Type(typedHours);
    if (typedMinutes != "-") main.txtMinutes.Type(typedMinutes);
    const auto text = [](auto value) { return std::to_string(value); };
    const std::string now = text(main.txtHours.Value.get()) + ":" + text(main.txtMinutes.Value.get());
    EXPECT_EQ(now + " " + text(main.txtMinutes.Least.get()) + "-" + text(main.txtMinutes.Most.get()), shown);
    EXPECT_EQ(text(fresh.EditOptions.Hours) + ":" + text(fresh.EditOptions.Minutes), now);
    main.chkUseInterval.Value = std::int16_t{0};
    EXPECT_EQ(text(main.txtHours.Value.get()) + text(main.txtMinutes.Value.get()), hours + std::string(minutes));
    EXPECT_FALSE(main.txtHours.Enabled || main.txtMinutes.Enabled || main.lblMinutes.Enabled);
    main.txtHours.Type("5");
    EXPECT_EQ(text(main.txtHours.Value.get()), hours) << "a screen reader reaches what is off";
    main.chkUseInterval.Value = std::int16_t{1};
    EXPECT_FALSE(fresh.unsaved.OptionsDirty) << "nothing differs any more";
  }
}

TEST_F(OptionsPageOfTheProgram, LeavesAloneWhatItCanNotShow) {
  const Changes odd = {{"CloseButton", "2"},  {"SortOrder", "2"},      {"RunSize", "7"},        {"DTheme", "-1"},
                       {"ApplyStyle", "9"},   {"ButtonStyle", "1"},    {"ConnectTimeOut", "0"}, {"NoCheckTimeEnd", "x"},
                       {"MsgBoxTime", "600"}, {"SortColumn", "-32768"}};
  for (const auto& [key, value] : odd) option(key, value);
  openPage();
  EXPECT_FALSE(program.unsaved.OptionsDirty);
  EXPECT_EQ(page.optSortOrder.Value.get(), 2) << "any order but 0 is descending";
  EXPECT_TRUE(page.chkCloseButton.Value.get() == 0 && page.optRunSize.Value.get() == 0);
  page.chkShowNewOnly.Value = std::int16_t{1};
  save();
  const Changes saved = changes();
  for (const auto& [key, value] : odd) EXPECT_EQ(saved.at(key), value) << key;
}

TEST_F(OptionsPageOfTheProgram, SaysWhatThePresentSettingsMean) {
  platform.files = {"/ding.wav"};
  openPage();
  EXPECT_EQ(page.lblRunStartUp.Caption.get(), "Start Velmora automatically when you logon to your computer.");
  EXPECT_EQ(page.lblEmailCheckStartUp.Caption.get(), "(Off)  Manually check for messages after starting Velmora.");
  EXPECT_EQ(page.lblMinimizeStartUp.Caption.get(), "(Off)  Velmora will start with a Normal Window.");
  EXPECT_EQ(page.lblUseInterval.Caption.get(),
            "(Off)  Do not use an Auto Check Timing Interval. Checking for messages must be done manually.");
  EXPECT_EQ(page.lblPlaySound[0].Caption.get(), "Sound Controlled by Individual Accounts.");
  EXPECT_EQ(page.lblDefaultClient.Caption.get(), "Email Client Controlled by Individual Accounts.");
  for (auto* box : {&page.chkRunStartUp, &page.chkEmailCheckStartUp, &page.chkMinimizeStartUp, &page.chkUseInterval}) {
    box->Value = static_cast<std::int16_t>(1 - box->Value.get());
  }
  page.txtDefaultSound.Text = "/ding.wav";
  EXPECT_EQ(page.lblRunStartUp.Caption.get(), "(Off)  Start Velmora manually from the Start Menu.");
  EXPECT_EQ(page.lblEmailCheckStartUp.Caption.get(), "Automatically check for messages when Velmora starts.");
  EXPECT_EQ(page.lblMinimizeStartUp.Caption.get(), "Velmora will start Minimized to the System Tray.");
  EXPECT_EQ(page.lblUseInterval.Caption.get(),
            "Set the Timing Interval below to Auto Check for messages in all Enabled Accounts.");
  EXPECT_EQ(page.lblPlaySound[0].Caption.get(), "The Default Sound will Play for all Enabled Accounts.");
  EXPECT_EQ(page.lblPlaySound[1].Caption.get(),
            "Sound Files will play based on these settings even if the Auto Check Message is not displayed.");
  page.chkPlaySound.Value = std::int16_t{0};
  EXPECT_EQ(page.lblPlaySound[0].Caption.get(), "No Sound will Play for any Accounts.");
  EXPECT_EQ(page.lblPlaySound[1].Caption.get(),
            "No Sound will play for these settings since Sound has been turned off.\r\nSee Defaults/Sound On.");
  EXPECT_EQ(page.mnuTraySounds.Caption.get(), "Soun&ds - Off|#SoundOff");
  EXPECT_EQ(program.options.PlaySound, 1) << "the tray's entry goes ahead of the save";
  cancel();
  EXPECT_EQ(page.mnuTraySounds.Caption.get(), "Soun&ds - On|#SoundOn");
}

TEST_F(OptionsPageOfTheProgram, EachSectionHasItsTitlePictureAndHelp) {
  openPage();
  const char* const titles[] = {"StartUp", "Auto Check", "Defaults", "Menu Colours", "Miscellaneous", "About"};
  for (std::int16_t section = 1; section <= 6; ++section) {
    page.TreeView.Select(section);
    EXPECT_EQ(page.lblOptionsTitle.Caption.get(), titles[section - 1]);
    for (std::size_t frame = 0; frame < 6; ++frame) {
      EXPECT_EQ(page.fraOptions[frame].Visible.get(), frame + 1 == static_cast<std::size_t>(section));
    }
    page.tbrButtons[optionsHelpBar]["Help"].click();
  }
  EXPECT_THAT(platform.helpShown, ElementsAre(210, 220, 230, 240, 250, 260));
  EXPECT_FALSE(page.lblTrayMenu.Visible);
  page.TrayData.TrayDrawsMenu = true;
  EXPECT_TRUE(page.lblTrayMenu.Visible) << "the tray's menu is not the program's to colour";
  page.chkQuickCheck.Value = std::int16_t{0};
  page.mnuTrayMenuColours.Click();
  EXPECT_EQ(page.TreeView.SelectedItem.get(), coloursSection) << "unsaved changes stay while the user looks at another";
  EXPECT_TRUE(page.fraOptions[3].Visible && program.unsaved.OptionsDirty);
}

TEST_F(OptionsPageOfTheProgram, MenusTakeTheirColoursFromTheFileOfTheirStyle) {
  const auto file = [this] { return platform.written["/home/frmMain.ini"]; };
  const auto ini = [](const std::string& top, const std::string& middle, const std::string& bottom) {
    return "[Menu]\nMenuStyle=4\n[New3D]\nNew3DColor1=" + top + "\nNew3DColor2=" + middle + "\nNew3DColor3=" + bottom +
           "\n";
  };
  openPage();
  const std::string usual = ini("10072511", "15724527", "5733521"), blue = ini("16766894", "16777215", "16744448");
  EXPECT_EQ(file(), usual);
  page.lbl3DTopColour.Click();
  EXPECT_THAT(platform.coloursAsked, IsEmpty()) << "a preset's colours are fixed";
  page.opt3DTheme.Choose(1);
  EXPECT_EQ(page.lbl3DBottomColour.BackColour, 0xFF8000);
  EXPECT_EQ(file(), usual);
  cancel();
  EXPECT_EQ(page.lbl3DBottomColour.BackColour, 0x577C91);
  page.opt3DTheme.Choose(1);
  save();
  EXPECT_EQ(file(), blue);
  const MenuColours shown = page.mnuEmailPopMenu.Colours.get().value();
  EXPECT_TRUE((shown == MenuColours{0xFFD7AE, 0xFFFFFF, 0xFF8000}) && page.mnuTrayPopMenu.Colours.get() == shown);
  page.opt3DTheme.Choose(7);
  EXPECT_TRUE(page.lblUserColours.Visible && page.lbl3DMiddleColour.Enabled);
  EXPECT_EQ(page.lbl3DTopColour.BackColour, 0xFFD7AE) << "they begin with what was last saved";
  platform.chosenColour = 0x123456;
  platform.onColourAsked = [this] { EXPECT_EQ(program.dialogs.count, 1) << "no timed check comes beneath it"; };
  page.lbl3DTopColour.Click();
  platform.chosenColour.reset();
  page.lbl3DMiddleColour.Click();
  EXPECT_THAT(platform.coloursAsked, ElementsAre(0, 0x123456)) << "each begins with the one picked last";
  EXPECT_TRUE(page.lbl3DTopColour.BackColour == 0x123456 && page.lbl3DMiddleColour.BackColour == 0xFFFFFF);
  platform.canWriteFiles = false;
  save();
  EXPECT_EQ(page.mnuTrayPopMenu.Colours.get(), shown) << "what can't be written isn't shown";
  platform.canWriteFiles = true;
  platform.written.erase("/home/frmMain.ini");
  Program next(platform);
  ASSERT_TRUE(Main(next));
  EXPECT_EQ(file(), ini("1193046", "16777215", "16744448"));
  EXPECT_EQ(next.frmMain.mnuColumns.Colours.get()->top, 0x123456);
}

TEST_F(OptionsPageOfTheProgram, RaisesTheButtonsOfTheChosenBars) {
  const auto raised = [](std::int16_t on, std::int16_t where) {
    Options options;
    options.ButtonStyle = on;
    options.ApplyStyle = where;
    return raisedBars(options);
  };
  EXPECT_EQ(raised(0, 3), (RaisedBars{false, false, false}));
  EXPECT_EQ(raised(1, 0), (RaisedBars{false, false, true}));
  EXPECT_EQ(raised(1, 1), (RaisedBars{true, false, false}));
  EXPECT_EQ(raised(1, 2), (RaisedBars{false, true, false}));
  EXPECT_EQ(raised(1, 3), (RaisedBars{true, true, true}));
  EXPECT_EQ(raised(1, 4), std::nullopt);
  openPage();
  page.chkButtonStyle.Value = std::int16_t{1};
  for (std::int16_t where = 0; where < 4; ++where) {
    page.optApplyStyle.Choose(static_cast<std::int16_t>(where + 1));
    save();
    EXPECT_EQ((RaisedBars{page.tbrMainButtons.Raised && page.tbrRules.Raised,
                          page.tbrOptAbout.Raised && page.tbrSound[1].Raised,
                          page.tbrButtons[0].Raised && program.frmFirstUse.tbrButtons.Raised}),
              raised(1, where));
  }
  Program next(platform);
  ASSERT_TRUE(Main(next));
  EXPECT_TRUE(next.frmMain.tbrMainButtons.Raised);
}

TEST_F(OptionsPageOfTheProgram, TheProtocolLogIsKeptAndShownForThisRun) {
  openPage();
  const auto set = [this](std::int16_t value, bool writable) {
    platform.canWriteFiles = writable;
    page.chkProtocolLog.Value = value;
    save();
  };
  const Button& show = page.tbrProtocolLog["ShowLog"];
  set(1, false);
  EXPECT_EQ(titles(), std::vector<std::string>{"Velmora - Protocol Log Error"});
  EXPECT_TRUE(page.chkProtocolLog.Value.get() == 0 && !show.Enabled && !program.unsaved.OptionsDirty);
  set(1, true);
  EXPECT_THAT(page.lblProtocolLog.Caption.get(), testing::EndsWith(" It is /home/protocol.log"));
  save();
  set(0, true);
  EXPECT_THAT(platform.protocolLogs, ElementsAre(true, true, false));
  show.click();
  EXPECT_THAT(platform.opened, ElementsAre("/home/protocol.log")) << "what was written may still be looked at";
  EXPECT_EQ(changes().count("ProtocolLog"), 0U);
}

TEST_F(OptionsPageOfTheProgram, TheTraysSwitchesSaveWhatElseWasChanged) {
  platform.servers["Work"].messages = {test::message("a"), test::message("b")};
  openPage();
  page.tbrMainButtons["Email"].click();
  checkAll();
  page.lvwEmail.ColumnClick("Date");
  EXPECT_FALSE(program.unsaved.OptionsDirty) << "the page keeps in step with the list";
  page.chkQuickCheck.Value = std::int16_t{0};
  page.mnuTraySounds.Click();
  EXPECT_FALSE(program.unsaved.OptionsDirty);
  const Changes saved = changes();
  EXPECT_TRUE(saved.at("QuickCheck") == "0" && saved.at("PlaySound") == "0" && saved.at("SortOrder") == "0");
  EXPECT_EQ(page.lvwEmail.Columns[3].Picture.get(), "Ascending") << "the order that the user has clicked";
}

TEST_F(OptionsPageOfTheProgram, TheTraysSwitchesLeaveTheOtherPagesAlone) {
  platform.servers["Work"].messages = {test::message("a"), test::message("b")};
  openPage();
  page.chkPlaySound.Value = std::int16_t{0};
  page.mnuTraySounds.Click();
  EXPECT_EQ(program.options.PlaySound, 1) << "the entry read Off";
  page.optSortColumn.Choose(4);
  platform.servers["Work"].line.onReceive = [this] {
    if (program.unsaved.OptionsDirty) page.mnuTrayAutoCheck.Click();
  };
  page.mnuTrayCheckAll.Click();
  EXPECT_EQ(page.lvwEmail.Columns[2].Picture.get(), "Descending") << "what is saved in a check counts behind it";
  page.tbrMainButtons["Accounts"].click();
  page.txtAcntServer.Text = "elsewhere";
  page.mnuTraySounds.Click();
  EXPECT_TRUE(page.txtAcntServer.Text == "elsewhere" && program.unsaved.AcntDirty);
}

TEST_F(OptionsPageOfTheProgram, AsksBeforeUnsavedChangesAreLost) {
  openPage();
  page.chkQuickCheck.Value = std::int16_t{0};
  platform.answers = {Answer::No};
  platform.onAsked = [this] {
    page.mnuTraySounds.Click();
    page.mnuTrayAutoCheck.Click();
    save();
    QuitApplication(program);
  };
  QuitApplication(program);
  platform.onAsked = nullptr;
  EXPECT_THAT(titles(), ElementsAre("Changes Not Saved!"));
  EXPECT_TRUE(!platform.hasQuit && program.unsaved.OptionsDirty) << "nothing is settled while the user is asked";
  page.chkRunStartUp.Value = std::int16_t{0};
  platform.tree.refusal = "The disk is full.";
  platform.answers = {Answer::Yes, Answer::Ok};
  QuitApplication(program);
  EXPECT_THAT(titles().back(), "Velmora - Settings Error");
  EXPECT_FALSE(platform.hasQuit) << "the user is told first, and may free the disk";
  EXPECT_EQ(platform.logonEntriesRemoved, 0);
  EXPECT_TRUE(page.tbrMainButtons.Enabled) << "nothing differs from what is in force";
  platform.tree.refusal.reset();
  SaveSession(program);
  EXPECT_EQ(changes().at("QuickCheck"), "0");
  save();
  EXPECT_EQ(platform.logonEntriesRemoved, 1);
  EXPECT_FALSE(page.tbrButtons[saveOptionsBar].Enabled);
  page.chkQuickCheck.Value = std::int16_t{1};
  platform.answers = {Answer::Cancel};
  page.KeyPress({"Ctrl+Q", KeyDeed::Quit});
  EXPECT_TRUE(platform.hasQuit);
  EXPECT_EQ(program.options.QuickCheck, 0);
}

}  // namespace
}  // namespace velmora
