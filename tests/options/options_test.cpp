#include "options/decisions/options.h"

#include <gtest/gtest.h>

#include "options/save_options.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::MemorySettings;

TEST(Options, AreWrittenUnderTheirNamesAndHaveTheirDefaults) {
  const std::map<std::string, std::vector<std::string>> keys = {
      {"0",
       {"EmailCheckStartUp",
        "StartUpDelay",
        "MinimizeStartUp",
        "UseInterval",
        "NoCheck",
        "ShowEmailMsgBox",
        "MsgBoxTime",
        "ShowEmail",
        "Hours",
        "ShowNewOnly",
        "ButtonStyle",
        "ApplyStyle",
        "SuppressConnectErrors",
        "SuppressRetrieveErrors",
        "NotifyNew",
        "NotifyFailures",
        "FollowMachine",
        "KeepInterval",
        "UseKeyring",
        "RefuseUntrusted"}},
      {"1",
       {"RunStartUp", "PlaySound", "RestoreColWidth", "FromToolTips", "ToToolTips", "SubjectToolTips", "MessageSort",
        "SortOrder", "CloseButton", "QuickCheck", "DeleteConfirmation"}},
      {"00:00", {"NoCheckTimeBegin", "NoCheckTimeEnd"}},
      {"", {"DefaultClient", "DefaultSound"}},
      {"30", {"Minutes"}},
      {"3", {"RunSize"}},
      {"5", {"DTheme"}},
      {"4", {"SortColumn"}},
      {"10", {"ConnectTimeOut"}},
      {"10072511", {"TopColour"}},
      {"15724527", {"MiddleColour"}},
      {"5733521", {"BottomColour"}}};
  std::map<std::string, std::string> expected;
  for (const auto& [value, names] : keys)
    for (const auto& name : names) expected["Settings\\Options/" + name] = value;
  MemorySettings tree;
  writeOptions(tree, Options{});
  EXPECT_EQ(tree.values, expected);
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
    if (option.written != OptionField::Written::ByTheSave) continue;
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
  start();
  SaveOptions(program);
  EXPECT_EQ(platform.logonEntriesMade, 1) << "that of the first run";
  EXPECT_EQ(platform.logonEntriesRemoved, 0);
  program.EditOptions.RunStartUp = 0;
  SaveOptions(program);
  SaveOptions(program);
  EXPECT_EQ(platform.logonEntriesRemoved, 1);
  program.EditOptions.RunStartUp = 1;
  SaveOptions(program);
  EXPECT_EQ(platform.logonEntriesMade, 2);
}

TEST_F(SavingOptions, KeepsWhatThePageDoesntOwn) {
  start();
  program.EditOptions.SortColumnLastUsed = "changed elsewhere";
  SaveOptions(program);
  EXPECT_EQ(program.options.SortColumnLastUsed, "4");
}

}  // namespace
}  // namespace velmora
