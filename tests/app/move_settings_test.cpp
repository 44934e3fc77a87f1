#include "app/move_settings.h"

#include <gmock/gmock.h>

#include "app/decisions/move_file.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::RunningProgram;
using test::TestPlatform;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const std::string exported = "/user/Velmora.velmora";
const std::string rulesText = "[Rules]\nRuleCount=1\n[Rule1]\nName=Ads \\ \"50 %\"\nAccount=Work\n";

/// Another machine, which has settings of its own.
class Moving : public RunningProgram {
 protected:
  void SetUp() override {
    addAccount("Work");
    addAccount("Home");
    set("Settings/AcntPassword1", " s\\ecret\n= ");
    option("MinimizeStartUp", "1");
    option("TopColour", "255");
    platform.written["/home/Rules.ini"] = rulesText;
    there_.platform.tree.values = {{"Settings/AcntNum", "2"},         {"Settings/FirstUse", "1"},
                                   {"Settings/AcntName1", "Old"},     {"Settings/AcntServer1", "old"},
                                   {"Settings/AcntName2", "HOME"},    {"Settings/AcntServer2", "Home"},
                                   {"Settings/AcntLoginID2", "user"}, {"Settings/AcntPassword2", "only here"},
                                   {"Settings\\Options/RunSize", "1"}};
    there_.platform.written["/home/Rules.ini"] = "[Rules]\nRuleCount=0\n";
    start();
    ASSERT_TRUE(Main(there_.program));
    platform.chosenFile = there_.platform.chosenFile = exported;
  }

  std::string exportAnswering(Answer passwords) {
    platform.answers = {passwords};
    program.frmMain.tbrOptMove["Export"].click();
    return platform.written[exported];
  }

  void import(const std::string& text, Answer answer = Answer::Yes) {
    there_.platform.written[exported] = text;
    there_.platform.asked.clear();
    there_.platform.answers = {answer};
    there_.program.frmMain.tbrOptMove["Import"].click();
  }

  std::string there(const std::string& key) { return there_.platform.tree.values[key]; }

  struct {
    TestPlatform platform;
    Program program{platform};
  } there_;
};

TEST_F(Moving, TakesAllAlongAndIsInForceAtOnce) {
  import(exportAnswering(Answer::Yes));
  ASSERT_EQ(there_.platform.asked.size(), 2U);
  EXPECT_THAT(there_.platform.asked[0].text,
              AllOf(HasSubstr("New:  Work\r\n"), HasSubstr("Changed:  Home\r\n"), HasSubstr("Removed:  Old\r\n"),
                    HasSubstr("MinimizeStartUp"), HasSubstr("Rules:  1 of the file in place of 0")));
  EXPECT_EQ(there("Settings/AcntNum"), "2");
  EXPECT_EQ(there("Settings/AcntPassword1"), " s\\ecret\n= ");
  EXPECT_EQ(there("Settings/AcntName2"), "Home");
  EXPECT_EQ(there("Settings\\Options/TopColour"), "255");
  EXPECT_EQ(there("Settings\\Options/RunSize"), "3");
  EXPECT_EQ(there_.platform.written["/home/" + there("Settings\\Options/RulesIniFileName")], rulesText);
  EXPECT_EQ(there_.program.options.MinimizeStartUp, 1);
  EXPECT_FALSE(there_.program.unsaved.any());
  EXPECT_EQ(there_.program.rules.live.RuleCount, 1);
  MainWindow& window = there_.program.frmMain;
  for (const TabStrip* strip : {&window.TabStripEmail, &window.TabStripAcnts}) {
    EXPECT_EQ(strip->Count(), 2);
  }
  EXPECT_EQ(window.txtAcntName.Text.get(), "Work");
  there_.platform.servers["Home"].messages = {test::message("a")};
  window.tbrButtons[checkAllBar]["CheckAll"].click();
  EXPECT_EQ(there_.program.accounts[2].AcntMsgCount, 1);
}

TEST_F(Moving, LeavesPasswordsOutUnlessAskedForAndKeepsThoseOfTheSameMailbox) {
  const std::string text = exportAnswering(Answer::No);
  EXPECT_THAT(text, Not(HasSubstr("ecret")));
  import(text);
  EXPECT_EQ(there("Settings/AcntPassword1"), "");
  EXPECT_EQ(there("Settings/AcntPassword2"), "only here");
}

TEST_F(Moving, GivesNoPasswordToAnotherServerNorTwoAccountsOneEntry) {
  set("Settings/AcntPort2", "995");
  MovedSettings moved;
  for (const auto& [name, port, key] :
       {std::tuple("HOME", "995", ""), {"Home again", "110", "k"}, {"Twice", "110", ""}}) {
    Account& account = moved.accounts.emplace_back();
    account.AcntName = name;
    account.AcntServer = "Home";
    account.AcntLoginID = "user";
    account.AcntPort = port;
    account.AcntKeyringKey = key;
  }
  there_.program.accounts[2].AcntKeyringKey = "here";
  there_.platform.ring.entries = {{"here", "in the ring"}, {"k", "of the copy"}};
  there_.program.options.UseKeyring = 1;
  import(composeMoveFile(moved));
  EXPECT_EQ(there("Settings/AcntKeyringKey1"), "") << "another port";
  const std::string fresh = there("Settings/AcntKeyringKey2");
  EXPECT_THAT(fresh, testing::AllOf(testing::Ne("k"), testing::Ne("")));
  EXPECT_EQ(there_.platform.ring.entries[fresh], "of the copy");
  EXPECT_EQ(there("Settings/AcntKeyringKey3"), "here");
  for (const char* number : {"1", "2", "3"}) EXPECT_EQ(there(std::string("Settings/AcntPassword") + number), "");
}

TEST_F(Moving, TakesNoOptionThatThePageCouldNotSet) {
  MovedSettings moved;
  moved.options.Hours = moved.options.Minutes = 0;
  moved.options.SortColumn = 99;
  moved.options.QuickCheck = -7;
  moved.options.ConnectTimeOut = 0;
  moved.options.NoCheckTimeBegin = std::string(5000, '1');
  import(composeMoveFile(moved));
  const Options& taken = there_.program.options;
  EXPECT_EQ(taken.IntervalMinutes(), 1);
  EXPECT_EQ(taken.SortColumn, 4);
  EXPECT_EQ(taken.QuickCheck, 1);
  EXPECT_EQ(taken.ConnectTimeOut, 10);
  EXPECT_EQ(taken.NoCheckTimeBegin, "00:00");
}

TEST_F(Moving, IsTakenBackByTheCopy) {
  const auto before = there_.platform.tree.values;
  import(exportAnswering(Answer::Yes));
  const std::string box = there_.platform.asked.back().text;
  const auto at = box.find("/home/Before Import");
  import(there_.platform.written[box.substr(at, box.find("\r\n", at) - at)]);
  for (const auto& [key, value] : before) EXPECT_EQ(there(key), value) << key;
}

TEST_F(Moving, ChangesNothingByAFileThatIsNoneOrByHalf) {
  const std::string good = exportAnswering(Answer::Yes);
  std::string flipped = good;
  flipped[good.size() / 2] ^= 1;
  const std::string twice = "[Account]\nAcntName=work\n";
  std::vector<std::pair<std::string, std::string>> files = {
      {"", "no file that the Export"},
      {"[Settings]\nAcntNum=3\n", "no file that the Export"},
      {"Velmora Export 2\nAnything", "newer version"},
      {"Velmora Export 1\n" + twice + twice + "Sum=1\n", "damaged"},
      {flipped, "damaged"},
  };
  for (std::size_t size = 17; size < good.size(); size += 19) files.emplace_back(good.substr(0, size), "damaged");
  for (const char* name : {"Evil\r\nRules:  0 of the file", "of more than 20 letters", "New Account"}) {
    MovedSettings odd;
    odd.accounts.resize(2);
    odd.accounts[0].AcntName = name;
    files.emplace_back(composeMoveFile(odd), "damaged");
  }
  const auto before = there_.platform.tree.values;
  const std::size_t filesBefore = there_.platform.written.size();
  for (const auto& [text, words] : files) {
    import(text);
    ASSERT_EQ(there_.platform.asked.size(), 1U) << text;
    EXPECT_THAT(there_.platform.asked[0].text, AllOf(HasSubstr(words), HasSubstr("Nothing was changed."))) << text;
  }
  import(good, Answer::No);
  EXPECT_EQ(there_.platform.tree.values, before);
  EXPECT_EQ(there_.platform.written.size(), filesBefore + 1) << "the file itself";
}

TEST_F(Moving, IsAllOrNothingWhereSomethingCanNotBeKept) {
  const std::string good = exportAnswering(Answer::Yes);
  const auto before = there_.platform.tree.values;
  const std::size_t filesBefore = there_.platform.written.size() + 1;
  there_.platform.onAsked = [this] { there_.platform.canWriteFiles = false; };
  import(good);
  EXPECT_EQ(there_.platform.tree.values, before);
  EXPECT_EQ(there_.platform.written.size(), filesBefore);
  there_.platform.canWriteFiles = true;
  there_.platform.onAsked = [this] { there_.platform.tree.refusal = "full"; };
  import(good);
  EXPECT_EQ(there_.platform.tree.values, before);
  EXPECT_EQ(there_.platform.written.size(), filesBefore);
  EXPECT_EQ(there_.program.accounts[1].AcntName, "Old");
  EXPECT_EQ(there_.program.options.RunSize, 1);
}

}  // namespace
}  // namespace velmora
