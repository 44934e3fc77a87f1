#include "rules/rule_check.h"

#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "rules/save_rules.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::message;
using testing::ElementsAre;

/// A rule as the tests need it: name, account, action, and one entry.
struct Given {
  std::string entry;
  std::int16_t action = Rule::markAsSpam;
  std::string account = "All Accounts";
  std::int16_t enabled = 1;
};

class RuleChecks : public test::RunningProgram {
 protected:
  void SetUp() override {
    platform.servers["Work"].messages = {message("a"), message("b"), message("c")};
    addAccount("Work");
    option("MessageSort", "0");
  }

  void giveRules(const std::vector<Given>& rules) {
    std::string file = "[Rules]\nRuleCount=" + std::to_string(rules.size()) + "\n";
    for (std::size_t i = 0; i < rules.size(); ++i) {
      file += "[Rule" + std::to_string(i + 1) + "]\nName=r" + std::to_string(i + 1) +
              "\nEnabled=" + std::to_string(rules[i].enabled) + "\nAccount=" + rules[i].account +
              "\nAction=" + std::to_string(rules[i].action) + "\nDescCount=1\nDescription1=" + rules[i].entry + "\n";
    }
    platform.written["/home/Rules.ini"] = file;
  }

  std::vector<std::string> pictures() {
    std::vector<std::string> result;
    for (const auto& row : program.frmMain.lvwEmail.Rows()) result.push_back(row.Picture);
    return result;
  }
};

TEST_F(RuleChecks, TheFirstRuleInForceThatFitsAndMarksDecides) {
  giveRules({{"Subject", Rule::markAsSpam, "Home"},
             {"Subject", Rule::markAsSpam, "work"},
             {"Subject", Rule::markAsSpam, "Work", 0},
             {"Subject", Rule::markAsSpam, "Work", 2},
             {"Subject Contains a", Rule::ignore},
             {"Subject Equals a", Rule::deleteFromServer, "Work"},
             {"Subject Contains a", Rule::markAsSpam},
             {"Subject Equals b", 7},
             {"Subject Equals b", Rule::markAsSpam},
             {"Subject Equals b", Rule::deleteFromServer}});
  start();
  EXPECT_EQ(program.rules.CurrentRule, 1);
  check();
  EXPECT_TRUE(platform.asked.empty()) << "what isn't evaluated can't fail";
  EXPECT_THAT(pictures(), ElementsAre("Delete", "SpamNew", "New"));
  EXPECT_EQ(program.messages.at(1, 1).MarkedBy, "r6");
  EXPECT_EQ(program.messages.at(1, 3).MarkedBy, "");
  EXPECT_TRUE(program.frmMain.tbrEmail["EmailSpam"].Enabled);
}

TEST_F(RuleChecks, ABadRuleShowsItsBoxForEachMessageThatItReaches) {
  giveRules({{"Subject Equals a"}, {"Size Equals large", Rule::deleteFromServer}, {"Subject Equals b"}});
  start();
  check();
  ASSERT_EQ(platform.asked.size(), 2U);
  EXPECT_EQ(platform.asked[0].text, "Rule Check - Process Error\r\nRemove from final code!!");
  EXPECT_EQ(platform.asked[0].title, "Velmora");
  EXPECT_THAT(pictures(), ElementsAre("SpamNew", "SpamNew", "New"));
}

TEST_F(RuleChecks, OfLargeMessagesLetTheProgramTurnAndStop) {
  option("QuickCheck", "0");
  giveRules(std::vector<Given>(40, Given{"Body Contains nothing"}));
  start();
  const std::function<void()> nothing = [] {};
  const struct {
    std::size_t bytes;
    std::function<void()> done;
    int turns;
    std::string status;
  } cases[] = {
      {400'000, nothing, 0, "Work - 1 Message"},
      {1'000'000, nothing, 2, "Work - 1 Message"},
      {1'000'000, [this] { stop(); }, 1, "Work - User Stopped Retrieval"},
      {1'000'000, [this] { EndApplication(program); }, 1, "Work - User Stopped Retrieval"},
  };
  int turns = 0;
  for (const auto& each : cases) {
    auto large = message("large");
    large.text += std::string(each.bytes, 'x');
    platform.servers["Work"].messages = {large};
    platform.onYield = [&] {
      if (program.frmMain.lvwEmail.EmptyText.get() != "Checking...") return;
      ++turns;
      each.done();
    };
    turns = 0;
    check();
    EXPECT_EQ(turns, each.turns);
    EXPECT_EQ(program.accounts[1].AcntStatusText, each.status);
    EXPECT_EQ(pictures().empty(), each.status != "Work - 1 Message");
  }
  EXPECT_TRUE(platform.asked.empty()) << "a stop is no failure of a rule";
}

TEST_F(RuleChecks, AnotherFileNameIsAnotherSetOfRules) {
  option("RulesIniFileName", "RulesBob.ini");
  giveRules({{"Subject Equals a"}});
  start();
  EXPECT_EQ(program.frmMain.lblRulesFileName.Caption.get(), "FileName: RulesBob.ini");
  EXPECT_EQ(program.rules.live.RuleCount, 0);
  EXPECT_EQ(program.rules.CurrentRule, 0);
  program.rules.ResizeRules(1);
  program.rules.working.RuleCount = 1;
  program.options.RulesIniFileName = "RulesRobin.ini";
  platform.answers = {Answer::Yes};
  WriteRules(program, "/home/RulesBob.ini");
  EXPECT_EQ(program.frmMain.lblRulesFileName.Caption.get(), "FileName: RulesRobin.ini");
  EXPECT_EQ(program.rules.live.RuleCount, 1);
  EXPECT_THAT(platform.written["/home/RulesBob.ini"], testing::HasSubstr("[Rule1]\nName=Rule\nEnabled=1\n"));
}

}  // namespace
}  // namespace velmora
