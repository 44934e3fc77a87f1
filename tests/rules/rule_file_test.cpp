#include "rules/decisions/rule_file.h"

#include <gmock/gmock.h>

#include "options/decisions/ini_file.h"
#include "rules/decisions/rules.h"
#include "support/test_platform.h"

namespace velmora {
namespace {

class RuleFile : public testing::Test {
 protected:
  Rules read(const std::string& content) {
    platform.written["Rules.ini"] = content;
    return read();
  }
  Rules read(Rules rules = {}) {
    IniFile file(platform, "Rules.ini");
    readRules(file, rules);
    return rules;
  }
  std::string write(Rules& rules) {
    IniFile(platform, "Rules.ini").KeySave("old", "Rule9", "Name");
    {
      IniFile file(platform, "Rules.ini");
      writeRules(file, rules);
    }
    takeWorking(rules);
    return platform.written["Rules.ini"];
  }

  test::TestPlatform platform;
};

constexpr const char* example =
    "[Rules]\nRuleCount=2\nShow=1\nShowNew=0\nTime=30\n"
    "[Rule1]\nName=Rule1\nEnabled=1\nAccount=All Accounts\nAction=2\nDescCount=2\n"
    "Description1=Subject Contains free offer \nDescription2=OR From Contains bob \n"
    "[Rule2]\nName=Big mail\nEnabled=0\nAccount=Home\nAction=1\nDescCount=1\nDescription1=Size GreaterThan 5000 \n";

TEST_F(RuleFile, GoesRound) {
  Rules rules = read(example);
  ASSERT_EQ(rules.live.RuleCount, 2);
  EXPECT_EQ(rules.live[1].Description[0], "Subject Contains free offer OR From Contains bob ");
  EXPECT_EQ(rules.live[2].Name, "Big mail");
  rules.CopyRulesToWorking();
  EXPECT_EQ(write(rules), example) << "of what the file held before, nothing stays";
}

TEST_F(RuleFile, EveryTextComesBackAsItWas) {
  for (const auto* text : {"NA", "\"Bob\"", "'x'", "'", " x", "y\t", "\vy", "y\f", "a=b", ";c", "[d]", "Größe"}) {
    Rules rules = read(example);
    rules.CopyRulesToWorking();
    rules.working[1].Name = rules.working[1].Account = text;
    rules.working[1].Description[1] = std::string("Subject Contains x") + text + " ";
    rules.working[1].Description[2] = text == std::string("NA") ? "\"Subject Contains x\" " : text + std::string(" x ");
    write(rules);
    const Rules again = read();
    EXPECT_EQ(again.live[1].Name, text);
    EXPECT_EQ(again.live[1].Account, text);
    EXPECT_EQ(again.live[1].Description[0], rules.live[1].Description[0]);
  }
}

TEST_F(RuleFile, WhatIsMissingOrRubbishIsThatOfAFreshRule) {
  EXPECT_EQ(read().live.Time, 30);
  for (const std::string count : {"", "0", "-3", "many", "99999"}) {
    const Rules rules = read("[Rules]\nRuleCount=" + count + "\nShow=1\nTime=x\n");
    EXPECT_LT(rules.live.RuleCount, 1) << count;
    EXPECT_EQ(rules.live.Show, 1);
    EXPECT_EQ(rules.live.Time, 30);
  }
  const Rules rules = read(
      "[Rules]\nRuleCount=3\n[Rule2]\nName=\nDescription1=Subject Contains a \nAction=x\n"
      "[Rule1]\nDescCount=-3\n[Rule3]\nDescCount=77\nDescription10=last\nDescription11=beyond\n");
  EXPECT_EQ(rules.live[1].Name, "Rule");
  EXPECT_EQ(rules.live[1].Enabled, 1);
  EXPECT_EQ(rules.live[1].Account, "All Accounts");
  EXPECT_EQ(rules.live[1].DescCount, 0);
  EXPECT_EQ(rules.live[2].Name, "");
  EXPECT_EQ(rules.live[2].Description[1], "") << "entries that aren't counted are not read";
  EXPECT_EQ(rules.live[3].DescCount, 10);
  EXPECT_EQ(rules.live[3].Description[1], " ") << "a blank is added to each";
  EXPECT_EQ(rules.live[3].Description[10], "last ");
  EXPECT_EQ(read("[Rules]\nRuleCount=32767\n").live[32767].Action, Rule::markAsSpam);
}

TEST_F(RuleFile, NothingOfTheFormerFileStays) {
  Rules rules = read(example);
  platform.written["Rules.ini"] = "[Rules]\nRuleCount=2\n";
  rules = read(rules);
  EXPECT_EQ(rules.live.Show, 0);
  EXPECT_EQ(rules.live[2].Name, "Rule");
  rules.working.RuleCount = 3;
  IniFile file(platform, "Rules.ini");
  EXPECT_THROW(writeRules(file, rules), RunTimeFailure);
  EXPECT_THROW(takeWorking(rules), RunTimeFailure);
  EXPECT_EQ(rules.live.RuleCount, 2);
  EXPECT_EQ(platform.written["Rules.ini"], "[Rules]\nRuleCount=2\n");
}

}  // namespace
}  // namespace velmora
