#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "rules/decisions/rule_file_name.h"
#include "rules/decisions/rules.h"
#include "rules/import_rules.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(RuleFileNames, BeginWithRulesAndEndWithIni) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "Rules.ini"},
      {"Rules", "Rules.ini"},
      {"Rules.ini", "Rules.ini"},
      {"Bob", "RulesBob.ini"},
      {"RulesBob.ini", "RulesBob.ini"},
      {"MyRules.ini", "RulesMy.ini"},
      {"RulesBob.INI", "RulesBob.INI.ini"},
      {"rulesBob", "RulesrulesBob.ini"},
      {"RRulesules", "Ruless.ini"},
      {"RulesRulesRulesRulesRulesRules", "Ruless.ini"},
      {"aRulebRulecRuledRuleeRulef", "RulesabcdeRulef.ini"},
      {"RulesRulesRulesRulesRulesRuleRuleRuleRuleRule", "RulesRule.ini"},
  };
  for (const auto& [given, name] : cases) EXPECT_EQ(ruleFileName(given), name) << given;
}

TEST(RuleFileNames, CanNotLeadElsewhereNorBeDisguised) {
  const auto canBe = [](const std::string& name) { return faultOfFileName(name).empty(); };
  const std::string longest(240, 'x');
  for (const auto* name : {"Rules.ini", "Rules Zoë.ini", "Rules~..ini", "Rules日本.ini"})
    EXPECT_TRUE(canBe(name)) << name;
  EXPECT_TRUE(canBe(longest));
  for (const auto* name : {"Rules/a.ini", "Rules..\\a.ini", "Rules\n.ini", "Rules\x7F.ini", "Rules\u0085.ini",
                           "Rules\u202Eini.ini", "Rules\u2069.ini", "Rules\xFF.ini"}) {
    EXPECT_FALSE(canBe(name)) << name;
  }
  EXPECT_FALSE(canBe(longest + "x"));
}

class RuleFiles : public test::RunningProgram {
 protected:
  void SetUp() override {
    addAccount("Work");
    option("UseInterval", "1");
    option("EmailCheckStartUp", "1");
    platform.written["/home/Rules.ini"] = rulesOf("Work", "All Accounts");
    start();
    ASSERT_EQ(timers(), "running");
    window.txtRuleFileName.focus.watch([this] { ++focused; });
    program.frmMain.txtRuleName.Text = "changed";
    ASSERT_TRUE(program.unsaved.RulesDirty);
  }

  static std::string rulesOf(const std::string& first, const std::string& second) {
    return "[Rules]\nRuleCount=2\n[Rule1]\nName=one\nAccount=" + first + "\n[Rule2]\nName=two\nAccount=" + second +
           "\n";
  }

  std::string timers() const {
    const bool startUp = program.frmMain.tmrMailStartUp.Enabled;
    const bool autoCheck = program.frmMain.tmrMailTime.Enabled;
    return startUp && autoCheck ? "running" : startUp || autoCheck ? "mixed" : "held";
  }

  /// All that a rename or an import may change, but for files that weren't there.
  std::vector<std::string> state() {
    std::vector<std::string> result = {program.options.RulesIniFileName, program.EditOptions.RulesIniFileName,
                                       program.rulesFile.path, program.rulesFile.content.value_or("none")};
    for (const auto& [key, value] : platform.tree.values) result.push_back(key + "=" + value);
    for (const auto& path : {"/home/Rules.ini", "/home/RulesBob.ini"}) result.push_back(platform.written[path]);
    for (const Rule& rule : program.rules.live.rules()) result.push_back(rule.Name + rule.Account);
    for (const Rule& rule : program.rules.working.rules()) result.push_back(rule.Name + rule.Account);
    result.push_back(program.frmMain.txtRuleName.Text);
    result.push_back(program.frmMain.lblRulesFileName.Caption);
    return result;
  }

  std::string stored() { return platform.tree.values["Settings\\Options/RulesIniFileName"]; }
  void press(const std::string& button) { program.frmMain.tbrRules[button].click(); }
  void saveAs(const std::string& name) {
    window.txtRuleFileName.Text = name;
    window.txtRuleFileName.Enter();
  }

  RuleFileWindow& window = program.frmRuleFile;
  int focused = 0;
};

TEST_F(RuleFiles, AreRenamedWithAllThatThePageHolds) {
  const std::string former = platform.written["/home/Rules.ini"];
  press("RulesRename");
  press("RulesRename");
  press("RulesImport");
  EXPECT_TRUE(platform.filesAsked.empty()) << "a screen reader reaches the buttons behind the window";
  EXPECT_TRUE(window.Visible);
  EXPECT_EQ(timers(), "held");
  EXPECT_EQ(window.lblRuleFilePathCurrent.Caption.get(), "/home/");
  EXPECT_EQ(window.lblRuleFileNameCurrent.Caption.get(), "Rules.ini");
  EXPECT_EQ(window.txtRuleFileName.Text.get(), "Rules");
  EXPECT_THAT(window.lblRuleFileIntro.Caption.get(), HasSubstr("if the FileName is different for each user. The"));
  window.Activate();
  EXPECT_EQ(focused, 1);
  saveAs("Bob");
  EXPECT_FALSE(window.Visible);
  EXPECT_EQ(timers(), "running");
  EXPECT_TRUE(platform.asked.empty());
  EXPECT_EQ(platform.written["/home/Rules.ini"], former);
  EXPECT_THAT(platform.written["/home/RulesBob.ini"], HasSubstr("Name=changed\n"));
  EXPECT_EQ(stored(), "RulesBob.ini");
  EXPECT_EQ(program.options.RulesIniFileName, "RulesBob.ini");
  EXPECT_EQ(program.EditOptions.RulesIniFileName, "RulesBob.ini");
  EXPECT_EQ(program.frmMain.lblRulesFileName.Caption.get(), "FileName: RulesBob.ini");
  EXPECT_EQ(program.rules.live[1].Name, "changed");
  EXPECT_FALSE(program.unsaved.RulesDirty);
  platform.tree.refusal = "The disk is full.";
  program.frmMain.txtRuleName.Text = " ";
  press("RulesRename");
  saveAs("RulesBob.ini");
  EXPECT_TRUE(platform.asked.empty()) << "to the name in use it is a save, which needs no settings";
  EXPECT_EQ(program.rules.live[1].Name, " ");
  EXPECT_FALSE(window.RuleFileOpen);
}

TEST_F(RuleFiles, StayAsTheyAreWhereARenameCanNotBe) {
  const struct {
    std::string name;
    std::function<void()> trouble;
    std::string title;
  } cases[] = {
      {"a/../b", [] {}, "Velmora - Rules FileName Error"},
      {std::string(232, 'x'), [] {}, "Velmora - Rules FileName Error"},
      {"Ann", [this] { platform.canWriteFiles = false; }, "Velmora - Settings Error"},
      {"Ann", [this] { platform.tree.refusal = "The disk is full."; }, "Velmora - Settings Error"},
      {"Bob", [this] { platform.answers = {Answer::No}; }, "Velmora - Rules File Exists"},
      {"", [this] { platform.written["/home/Rules.ini"] += "\n"; }, "Velmora - Rules File Changed"},
  };
  platform.written["/home/RulesBob.ini"] = "Bob's";
  press("RulesRename");
  for (const auto& each : cases) {
    platform.asked.clear();
    each.trouble();
    const auto before = state();
    saveAs(each.name);
    EXPECT_THAT(titles(), ElementsAre(each.title));
    EXPECT_EQ(state(), before) << each.title;
    platform.canWriteFiles = true;
    platform.tree.refusal.reset();
  }
  EXPECT_EQ(focused, 6) << "the name is selected";
  EXPECT_TRUE(window.Visible);
  EXPECT_EQ(timers(), "held");
  window.tbrButtons["Cancel"].click();
  EXPECT_FALSE(window.Visible);
  EXPECT_EQ(timers(), "running");
  EXPECT_TRUE(program.unsaved.RulesDirty);
  press("RulesRename");
  EndApplication(program);
  EXPECT_FALSE(window.Visible);
}

TEST_F(RuleFiles, OfOthersAreImportedForAllAccounts) {
  platform.written["/usb/MyRules"] = rulesOf("Home", "All Accounts");
  platform.chosenFile = "/usb/MyRules";
  platform.answers = {Answer::Yes};
  platform.onFileAsked = [this] {
    EXPECT_EQ(timers(), "held");
    press("RulesImport");
    press("RulesRename");
    EXPECT_FALSE(window.Visible);
  };
  program.rules.CurrentRule = 2;
  press("RulesImport");
  EXPECT_THAT(platform.filesAsked, ElementsAre(FileQuestion{"", "(*.ini)|*.ini|", FileQuestion::Purpose::Open}));
  EXPECT_EQ(timers(), "running");
  EXPECT_THAT(titles(), ElementsAre("Changes Not Saved!", "Velmora - Rule Import Successful"));
  EXPECT_EQ(platform.asked[1].text,
            "The Rule File has been successfully imported.          \r\n\r\n"
            "Some Account modifications were made to\r\nensure compatibility with your current Accounts.\r\n"
            "You may need to adjust these.\r\n\r\n");
  EXPECT_EQ(stored(), "RulesMy.ini");
  EXPECT_EQ(program.rules.live[1].Account, "All Accounts");
  EXPECT_EQ(program.frmMain.txtRuleName.Text.get(), "one");
  EXPECT_EQ(program.frmMain.lblRulesFileName.Caption.get(), "FileName: RulesMy.ini");
  EXPECT_FALSE(program.unsaved.RulesDirty);
  platform.written["/home/RulesMy.ini"] = rulesOf("All Accounts", "All Accounts") + "[Rule1]\nName=none";
  platform.chosenFile = "/home/RulesMy.ini";
  press("RulesImport");
  ASSERT_EQ(platform.asked.size(), 3U) << "another program's change of the file in use is what is imported";
  EXPECT_EQ(platform.asked[2].text, "The Rule File has been successfully imported.          \r\n\r\n");
}

TEST_F(RuleFiles, StayAsTheyAreWhereAnImportCanNotBe) {
  const std::string good = rulesOf("Home", "Home");
  const std::string failed = "Velmora - Rule Import Failed";
  const struct {
    std::optional<std::string> path;
    std::string content;
    std::function<void()> trouble;
    std::vector<std::string> titles;
  } cases[] = {
      {std::nullopt, "", [] {}, {}},
      {"/usb/a.ini", "nonsense", [] {}, {failed}},
      {"/usb/a.ini", "[Rules]\nRuleCount=-3\n", [] {}, {failed}},
      {"/usb/a.ini", "[Rules]\nRuleCount=32768\n", [] {}, {failed}},
      {"/usb/a\\b.ini", good, [] {}, {"Velmora - Rules FileName Error"}},
      {"/usb/a.ini", good, [this] { platform.canWriteFiles = false; }, {"Velmora - Settings Error"}},
      {"/usb/a.ini", good, [this] { platform.tree.refusal = "The disk is full."; }, {"Velmora - Settings Error"}},
      {"/usb/Bob.ini", good, [this] { platform.answers.push_back(Answer::No); }, {"Velmora - Rules File Exists"}},
      {"/home/Rules.ini", good, [this] { platform.canWriteFiles = false; }, {"Velmora - Settings Error"}},
  };
  platform.written["/home/RulesBob.ini"] = "Bob's";
  for (const auto& each : cases) {
    platform.asked.clear();
    platform.chosenFile = each.path;
    if (each.path) platform.written[*each.path] = each.content;
    platform.answers = {Answer::Yes};
    each.trouble();
    const auto before = state();
    press("RulesImport");
    auto expected = each.titles;
    expected.insert(expected.begin(), "Changes Not Saved!");
    EXPECT_EQ(titles(), expected);
    EXPECT_EQ(state(), before) << each.path.value_or("cancelled");
    EXPECT_EQ(timers(), "running");
    platform.canWriteFiles = true;
    platform.tree.refusal.reset();
  }
  platform.filesAsked.clear();
  platform.answers = {Answer::No};
  press("RulesImport");
  EXPECT_TRUE(platform.filesAsked.empty()) << "unsaved changes come first";
}

}  // namespace
}  // namespace velmora
