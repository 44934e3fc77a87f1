#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "rules/decisions/rule_file_name.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using testing::ElementsAre;
using namespace std::string_literals;

TEST(RuleFileNames, BeginWithRulesAndEndWithIni) {
  const std::pair<std::string, std::string> cases[] = {{"", "Rules.ini"},
                                                       {"Rules.ini", "Rules.ini"},
                                                       {"MyRules.ini", "RulesMy.ini"},
                                                       {"RulesBob.INI", "RulesBob.INI.ini"},
                                                       {"rulesBob", "RulesrulesBob.ini"},
                                                       {"RRulesules", "Ruless.ini"},
                                                       {"RulesRulesRulesRulesRulesRules", "Ruless.ini"},
                                                       {"aRulebRulecRuledRuleeRulef", "RulesabcdeRulef.ini"}};
  for (const auto& [given, name] : cases) EXPECT_EQ(withIniEnding(rulesPrefixed(given)), name) << given;
}

TEST(RuleFileNames, CanNotLeadElsewhereNorBeDisguised) {
  const std::string longest(240, 'x');
  for (const auto& name : {"Rules~ Zoë..ini"s, "Rules日本.ini"s, longest}) EXPECT_EQ(faultOfFileName(name), "") << name;
  for (const auto& name : {"Rules/a.ini"s, "Rules..\\a.ini"s, "Rules\n.ini"s, "Rules\x7F.ini"s, "Rules\u0085.ini"s,
                           "Rules\u202Eini.ini"s, "Rules\u2069.ini"s, "Rules\xFF.ini"s, longest + "x"}) {
    EXPECT_NE(faultOfFileName(name), "") << name;
  }
}

class RuleFiles : public test::RunningProgram {
 protected:
  void SetUp() override {
    addAccount("Work");
    option("UseInterval", "1");
    option("EmailCheckStartUp", "1");
    platform.written["/home/Rules.ini"] = rulesOf("Work");
    platform.written["/home/RulesBob.ini"] = "Bob's";
    start();
    window.txtRuleFileName.focus.watch([this] { ++focused; });
    program.frmMain.txtRuleName.Text = "changed";
  }

  static std::string rulesOf(const std::string& account) {
    return "[Rules]\nRuleCount=2\n[Rule1]\nName=one\nAccount=" + account + "\n[Rule2]\nName=two\n";
  }

  int timersRunning() const { return program.frmMain.tmrMailStartUp.Enabled + program.frmMain.tmrMailTime.Enabled; }
  void press(const std::string& button) { program.frmMain.tbrRules[button].click(); }
  void saveAs(const std::string& name) {
    window.txtRuleFileName.Text = name;
    window.txtRuleFileName.Enter();
  }

  /// All that a rename or an import may change, but for files that weren't there.
  std::string state() {
    std::string all = program.options.RulesIniFileName + program.rulesFile.path + program.rulesFile.content.value() +
                      program.frmMain.lblRulesFileName.Caption.get() + platform.written["/home/Rules.ini"] +
                      platform.written["/home/RulesBob.ini"];
    for (const auto& [key, value] : platform.tree.values) all += key + value;
    for (const Rule& rule : program.rules.live.rules()) all += rule.Name + rule.Account;
    for (const Rule& rule : program.rules.working.rules()) all += rule.Name + rule.Account;
    return all + program.frmMain.txtRuleName.Text.get();
  }

  /// The titles of the dialogs that something brings which must change nothing.
  std::vector<std::string> titlesWhere(const std::function<void()>& refused) {
    platform.asked.clear();
    const auto before = state();
    refused();
    EXPECT_EQ(state(), before);
    platform.canWriteFiles = true;
    platform.tree.refusal.reset();
    return titles();
  }

  RuleFileWindow& window = program.frmRuleFile;
  std::function<void()> noDisk = [this] { platform.canWriteFiles = false; };
  std::function<void()> noSettings = [this] { platform.tree.refusal = "The disk is full."; };
  int focused = 0;
};

TEST_F(RuleFiles, AreRenamedWithAllThatThePageHolds) {
  const std::string former = platform.written["/home/Rules.ini"];
  for (const auto* button : {"RulesRename", "RulesRename", "RulesImport"}) press(button);
  EXPECT_TRUE(platform.filesAsked.empty()) << "a screen reader reaches the buttons behind the window";
  EXPECT_EQ(window.lblRuleFilePathCurrent.Caption.get() + window.lblRuleFileNameCurrent.Caption.get(),
            "/home/Rules.ini");
  EXPECT_TRUE(window.txtRuleFileName.Text == "Rules" && timersRunning() == 0);
  window.Activate();
  EXPECT_EQ(focused, 1);
  saveAs("Ann");
  EXPECT_TRUE(!window.Visible && timersRunning() == 2);
  EXPECT_EQ(platform.written["/home/Rules.ini"], former);
  EXPECT_THAT(platform.written["/home/RulesAnn.ini"], testing::HasSubstr("Name=changed\n"));
  EXPECT_EQ(platform.tree.values["Settings\\Options/RulesIniFileName"], "RulesAnn.ini");
  EXPECT_EQ(program.frmMain.lblRulesFileName.Caption.get(), "FileName: RulesAnn.ini");
  EXPECT_EQ(program.rules.live[1].Name, "changed");
  EXPECT_FALSE(program.unsaved.RulesDirty);
  noSettings();
  program.frmMain.txtRuleName.Text = " ";
  press("RulesRename");
  saveAs("RulesAnn.ini");
  EXPECT_TRUE(platform.asked.empty()) << "to the name in use it is a save, which needs no settings";
  EXPECT_EQ(program.rules.live[1].Name, " ");
}

TEST_F(RuleFiles, StayAsTheyAreWhereARenameCanNotBe) {
  const struct {
    std::string name;
    std::string title;
    std::function<void()> trouble = [] {};
  } cases[] = {{"a/../b", "Velmora - Rules FileName Error"},
               {std::string(232, 'x'), "Velmora - Rules FileName Error"},
               {"Ann", "Velmora - Settings Error", noDisk},
               {"Ann", "Velmora - Settings Error", noSettings},
               {"Bob", "Velmora - Rules File Exists"},
               {"", "Velmora - Rules File Changed", [this] { platform.written["/home/Rules.ini"] += "\n"; }}};
  press("RulesRename");
  for (const auto& each : cases) {
    platform.written.erase("/home/RulesAnn.ini");
    each.trouble();
    EXPECT_THAT(titlesWhere([&] { saveAs(each.name); }), ElementsAre(each.title));
  }
  EXPECT_EQ(focused, 6) << "the name is selected";
  EXPECT_TRUE(window.Visible && timersRunning() == 0);
  window.tbrButtons["Cancel"].click();
  EXPECT_TRUE(!window.Visible && timersRunning() == 2 && program.unsaved.RulesDirty);
  press("RulesRename");
  EndApplication(program);
  EXPECT_FALSE(window.Visible);
}

TEST_F(RuleFiles, OfOthersAreImportedForAllAccounts) {
  const std::string done = "The Rule File has been successfully imported.          \r\n\r\n";
  platform.written["/usb/MyRules.ini"] = rulesOf("Home");
  platform.chosenFile = "/usb/MyRules.ini";
  platform.answers = {Answer::Yes};
  platform.onFileAsked = [this] {
    EXPECT_EQ(timersRunning(), 0);
    for (const auto* button : {"RulesImport", "RulesRename"}) press(button);
    EXPECT_FALSE(window.Visible);
  };
  program.rules.CurrentRule = 2;
  press("RulesImport");
  EXPECT_THAT(platform.filesAsked, ElementsAre(FileQuestion{"", "(*.ini)|*.ini|", FileQuestion::Purpose::Open}));
  EXPECT_EQ(timersRunning(), 2);
  EXPECT_THAT(titles(), ElementsAre("Changes Not Saved!", "Velmora - Rule Import Successful"));
  const std::string modified =
      "Some Account modifications were made to\r\nensure compatibility with your current Accounts.\r\nYou may need to "
      "adjust these.\r\n\r\n";
  EXPECT_EQ(platform.asked[1].text, done + modified);
  EXPECT_EQ(platform.tree.values["Settings\\Options/RulesIniFileName"], "RulesMy.ini");
  EXPECT_EQ(program.rules.live[1].Account, "All Accounts");
  EXPECT_EQ(program.frmMain.txtRuleName.Text.get(), "one");
  platform.chosenFile = "/home/RulesMy.ini";
  platform.written["/home/RulesMy.ini"] = rulesOf("All Accounts");
  press("RulesImport");
  EXPECT_EQ(platform.asked.at(2).text, done) << "what another program made of the file in use is imported";
}

TEST_F(RuleFiles, StayAsTheyAreWhereAnImportCanNotBe) {
  const std::string good = rulesOf("Home");
  const struct {
    std::string path;
    std::string content;
    std::string title;
    std::function<void()> trouble = [] {};
  } cases[] = {{"/usb/a.ini", "nonsense", "Velmora - Rule Import Failed"},
               {"/usb/a.ini", "[Rules]\nRuleCount=-3\n", "Velmora - Rule Import Failed"},
               {"/usb/a.ini", "[Rules]\nRuleCount=32768\n", "Velmora - Rule Import Failed"},
               {"/usb/a\\b.ini", good, "Velmora - Rules FileName Error"},
               {"/usb/a.ini", good, "Velmora - Settings Error", noSettings},
               {"/usb/Bob.ini", good, "Velmora - Rules File Exists"},
               {"/home/Rules.ini", good, "Velmora - Settings Error", noDisk}};
  const auto import = [this] { press("RulesImport"); };
  for (const auto& each : cases) {
    platform.written[*(platform.chosenFile = each.path)] = each.content;
    platform.answers = {Answer::Yes, Answer::No};
    each.trouble();
    EXPECT_THAT(titlesWhere(import), ElementsAre("Changes Not Saved!", each.title));
    EXPECT_EQ(timersRunning(), 2);
  }
  platform.filesAsked.clear();
  platform.answers = {Answer::No};
  import();
  EXPECT_TRUE(platform.filesAsked.empty()) << "unsaved changes come first";
  platform.chosenFile.reset();
  platform.answers = {Answer::Yes};
  EXPECT_THAT(titlesWhere(import), ElementsAre("Changes Not Saved!")) << "cancelled";
  EXPECT_EQ(timersRunning(), 2);
}

}  // namespace
}  // namespace velmora
