#include "options/options.h"

#include <gmock/gmock.h>

#include "options/save_options.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::MemorySettings;
using testing::ElementsAre;

std::vector<std::string> writtenKeys() {
  MemorySettings tree;
  writeOptions(tree, Options{});
  return tree.written;
}

TEST(Options, AreWrittenUnderTheirNames) {
  EXPECT_THAT(writtenKeys(),
              ElementsAre("RunStartUp", "EmailCheckStartUp", "StartUpDelay", "MinimizeStartUp", "UseInterval",
                          "NoCheck", "NoCheckTimeBegin", "NoCheckTimeEnd", "ShowEmailMsgBox", "MsgBoxTime", "ShowEmail",
                          "Hours", "Minutes", "DefaultClient", "DefaultSound", "RunSize", "PlaySound", "DTheme",
                          "TopColour", "MiddleColour", "BottomColour", "ShowNewOnly", "RestoreColWidth", "ButtonStyle",
                          "ApplyStyle", "FromToolTips", "ToToolTips", "SubjectToolTips", "MessageSort", "SortColumn",
                          "SortOrder", "CloseButton", "QuickCheck", "DeleteConfirmation", "SuppressConnectErrors",
                          "SuppressRetrieveErrors", "ConnectTimeOut"));
}

TEST(Options, HaveTheirDefaultsInAnEmptyTree) {
  const std::map<std::string, std::string> ones = {
      {"Minutes", "30"},   {"NoCheckTimeBegin", "00:00"}, {"NoCheckTimeEnd", "00:00"},  {"RunSize", "3"},
      {"DTheme", "5"},     {"TopColour", "10072511"},     {"MiddleColour", "15724527"}, {"BottomColour", "5733521"},
      {"SortColumn", "4"}, {"ConnectTimeOut", "10"},      {"DefaultClient", ""},        {"DefaultSound", ""}};
  const std::set<std::string> on = {"RunStartUp",  "PlaySound",       "RestoreColWidth",   "FromToolTips",
                                    "ToToolTips",  "SubjectToolTips", "MessageSort",       "SortOrder",
                                    "CloseButton", "QuickCheck",      "DeleteConfirmation"};
  MemorySettings tree;
  writeOptions(tree, Options{});
  for (const auto& key : tree.written) {
    const auto special = ones.find(key);
    const std::string expected = special != ones.end() ? special->second : on.contains(key) ? "1" : "0";
    EXPECT_EQ(tree.values["Settings\\Options/" + key], expected) << key;
  }
  EXPECT_EQ(Options{}.IntervalMinutes(), 30);
  EXPECT_EQ(Options{}.SortColumnLastUsed, "4");
  EXPECT_EQ(Options{}.RulesIniFileName, "Rules.ini");
}

TEST(Options, EachComesBackAsItWasWritten) {
  for (const auto& option : optionFields()) {
    MemorySettings tree;
    const bool isText = std::holds_alternative<std::string Options::*>(option.field.member);
    tree.values["Settings\\Options/" + std::string(option.field.key)] = isText ? " Grüße; x=1 " : "77";
    Options changed;
    loadOptions(tree, option.read, changed);
    EXPECT_FALSE(isEqual(option.field, changed, Options{})) << option.field.key;
    if (option.written == OptionField::Written::Elsewhere) continue;
    MemorySettings copy;
    writeOptions(copy, changed);
    EXPECT_EQ(copy.values["Settings\\Options/" + std::string(option.field.key)], isText ? " Grüße; x=1 " : "77");
  }
}

TEST(Options, NonsenseWhereANumberBelongsGivesTheDefault) {
  for (const auto* nonsense : {"", "ten", "10s", "32768", "-99999", "1e3", "99999999999999999999999"}) {
    MemorySettings tree;
    tree.values["Settings\\Options/ConnectTimeOut"] = nonsense;
    Options options;
    loadOptions(tree, OptionField::Read::AtStartUp, options);
    EXPECT_EQ(options.ConnectTimeOut, 10) << nonsense;
  }
}

class SavingOptions : public test::RunningProgram {};

TEST_F(SavingOptions, ChangesTheLogonEntryOncePerChange) {
  addAccount("Work");
  start();
  SaveOptions(program);
  EXPECT_EQ(platform.logonEntriesMade + platform.logonEntriesRemoved, 0);
  program.EditOptions.RunStartUp = 0;
  SaveOptions(program);
  SaveOptions(program);
  EXPECT_EQ(platform.logonEntriesRemoved, 1);
  program.EditOptions.RunStartUp = 1;
  SaveOptions(program);
  EXPECT_EQ(platform.logonEntriesMade, 1);
}

TEST_F(SavingOptions, LeavesTheEntryOfTheFirstRunAlone) {
  option("RunStartUp", "0");
  start();
  SaveOptions(program);
  EXPECT_EQ(platform.logonEntriesMade, 1);
  EXPECT_EQ(platform.logonEntriesRemoved, 0);
}

TEST_F(SavingOptions, TakesOverThePageButNotWhatItDoesntOwn) {
  addAccount("Work");
  option("SortColumnLastUsed", "Subject");
  start();
  platform.tree.written.clear();
  program.EditOptions.UseInterval = 1;
  program.EditOptions.SortColumnLastUsed = "changed elsewhere";
  SaveOptions(program);
  EXPECT_EQ(platform.tree.written, writtenKeys());
  EXPECT_EQ(program.options.SortColumnLastUsed, "Subject");
  EXPECT_TRUE(program.frmMain.tmrMailTime.Enabled);
  EXPECT_FALSE(program.frmMain.tmrStatusBar.Enabled);
  program.EditOptions.UseInterval = 0;
  SaveOptions(program);
  EXPECT_FALSE(program.frmMain.tmrMailTime.Enabled);
  EXPECT_TRUE(program.frmMain.tmrStatusBar.Enabled);
  EXPECT_EQ(panel(4), "Auto Check Off");
}

}  // namespace
}  // namespace velmora
