#include "rules/rules_page.h"

#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "rules/decisions/rule_builder.h"
#include "rules/edit_rules.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class RulesPageOfTheProgram : public test::RunningProgram {
 protected:
  void SetUp() override {
    for (const auto* name : {"Work", "Home"}) addAccount(name).messages = {test::message("bob"), test::message("eve")};
    option("MessageSort", "0");
  }

  void open(const std::string& file = "") {
    if (!file.empty()) platform.written["/home/Rules.ini"] = file;
    start();
    main.tbrMainButtons["Rules"].click();
  }
  void update() { main.tbrRuleUpdate[0]["Update"].click(); }
  void build(const std::string& where, const std::string& criteria) {
    main.cboWhere.Choose(where);
    main.txtCriteria.Text = criteria;
    update();
  }
  void save() { main.tbrButtons[saveRulesBar]["SaveRules"].click(); }
  void count() {
    while (main.tmrRuleFits.Enabled) main.tmrRuleFits.tick();
  }
  std::string built() {
    return main.cboWhere.Text.get() + "|" + main.cboCondition.Text.get() + "|" + main.txtCriteria.Text.get() + "|" +
           (main.chkNot.Value.get() == 1 ? "NOT" : "");
  }
  std::string description() { return main.txtRuleDescription.Text; }

  MainWindow& main = program.frmMain;
};

TEST_F(RulesPageOfTheProgram, AsksAndRefusesInItsOwnWords) {
  open();
  main.tbrRules["RulesAdd"].click();
  save();
  main.txtRuleName.Text = " ";
  save();
  for (int i = 0; i < 11; ++i) build("Subject", "FLORIDA");
  EXPECT_THAT(description(), testing::StartsWith("Subject Contains FLANDIDA AND Subject Contains FLANDIDA AND "));
  EXPECT_EQ(main.lblRuleDescEntries.Caption.get(), "10 of 10 Entries");
  main.tbrRules["RulesDelete"].click();
  const std::string ten(10, ' ');
  const Question expected[] = {
      {"Rule Description Error...\r\n\r\nThe Rule Description can not be blank." + ten +
           "\r\n\r\nPlease enter the appropriate search text\r\nin the Criteria textbox and click 'Update\r\n"
           "Description' to finish defining the Rule.\r\n\r\n",
       "Velmora - Rule Description Error", Question::Icon::Critical},
      {"Rule Name Error...\r\n\r\nThe Rule Name can not be blank." + ten + ten +
           "\r\n\r\nPlease re-enter an appropriate Rule Name.\r\n\r\n",
       "Velmora - Rule Name Error", Question::Icon::Critical},
      {"Maximum Reached!\r\n\r\nThe Maximum number of entries is" + ten +
           "\r\nlimited to 10.\r\n\r\nPlease try adding another Rule\r\nusing the same conditions.\r\n",
       "Velmora - Maximum Entries"},
      {"You are about to delete the following Rule..." + ten +
           "\r\nRule Name:  ' '\r\n\r\nPlease proceed with caution since this action\r\nis NOT reversible!\r\n\r\n"
           "Would you like to proceed?\r\n",
       "Delete Rule - Proceed With Caution", Question::Icon::Critical, Question::Buttons::YesNo}};
  EXPECT_THAT(platform.asked, testing::ElementsAreArray(expected));
}

TEST_F(RulesPageOfTheProgram, KeepsWhatIsNotSavedThroughAdditionsChecksAndQuitting) {
  open("[Rules]\nRuleCount=1\n[Rule1]\nName=Old\nDescCount=1\nDescription1=Subject Equals bob\n");
  main.txtCriteria.Text = "half built";
  main.tbrMainButtons["Rules"].click();
  EXPECT_EQ(main.txtCriteria.Text.get(), "half built") << "the page was there already";
  build("Subject", "eve");
  main.cboBoolean.Choose("OR");
  main.tbrRules["RulesAdd"].click();
  build("From", "nobody");
  main.txtCriteria.Text = "half built";
  main.tbrRuleUpdate[1]["Undo"].click();
  main.mnuTrayCheckAll.Click();
  EXPECT_TRUE(platform.asked.empty());
  EXPECT_EQ(main.fraMain[rulesPage].Visible.get(), true);
  EXPECT_TRUE(program.messages.at(1, 1).Spam && !program.messages.at(1, 2).Spam) << "the saved rules are in force";
  EXPECT_TRUE(main.tbrRuleUpdate[1]["Redo"].Enabled) << "a check takes nothing back";
  main.tbrRuleUpdate[1]["Redo"].click();
  for (const auto& [answer, quits, unsaved] : {std::tuple{Answer::No, false, true}, {Answer::Yes, true, false}}) {
    platform.answers = {answer};
    QuitApplication(program);
    EXPECT_EQ(platform.asked.back().title, "Changes Not Saved!");
    EXPECT_EQ(platform.hasQuit, quits);
    EXPECT_EQ(program.unsaved.RulesDirty, unsaved);
  }
  EXPECT_THAT(
      platform.written["/home/Rules.ini"],
      HasSubstr("Description1=Subject Equals bob \nDescription2=OR Subject Equals eve \n[Rule2]\nName=Rule2\n"));
}

/// A screen reader presses, chooses and writes behind a question, too.
TEST_F(RulesPageOfTheProgram, DeletesTheRuleThatItHasNamed) {
  open("[Rules]\nRuleCount=3\n[Rule1]\nName=a\n[Rule2]\nName=b\n[Rule3]\nName=c\n");
  main.lstRules.Choose(2);
  platform.onAsked = [this] {
    for (const auto* key : {"RulesDelete", "RulesAdd", "RulesRename"}) main.tbrRules[key].click();
    main.tbrMoveRule["Down"].click();
    main.lstRules.Tick(3, false);
    main.txtRuleName.Text = "z";
  };
  platform.answers = {Answer::Yes};
  main.tbrRules["RulesDelete"].click();
  EXPECT_EQ(platform.asked.size(), 1U);
  EXPECT_EQ(program.rules.live.RuleCount, 2);
  EXPECT_EQ(program.rules.live[1].Name + program.rules.live[2].Name, "ac");
  EXPECT_EQ(main.lstRules.Items(), (std::vector<CheckList::Item>{{"a", true}, {"c", true}}));
}

TEST_F(RulesPageOfTheProgram, ShowsWhatWasWrittenByHandAndIsEndedByNone) {
  open(
      "[Rules]\nRuleCount=5\nTime=300\n[Rule1]\nDescCount=1\n[Rule2]\nDescCount=1\nDescription1=Header Is x\n"
      "[Rule3]\nAction=7\nEnabled=2\nDescCount=2\nDescription1=Subject\nDescription2=AND Size Contains 5\n"
      "[Rule4]\nAccount=Gone\n[Rule5]\nName=Last\nDescCount=1\nDescription1=OR Size LessThan NOT  7 \n");
  const std::string shown[] = {" ", "Header Is x ", "Subject AND Size Contains 5 "};
  for (std::int16_t number = 1; number <= 3; ++number) {
    main.lstRules.Choose(number);
    EXPECT_EQ(description(), shown[number - 1]);
    EXPECT_EQ(built(), "|||");
    update();
    EXPECT_EQ(description(), shown[number - 1]) << "of no field, nothing is built";
  }
  EXPECT_EQ(main.fraRule.Caption.get(), "Rule: Not Enabled");
  EXPECT_EQ(main.fraAction.ForeColour.get(), 192);
  EXPECT_EQ(main.txtRuleNotifyTime.Value.get(), 300);
  main.lstRules.Choose(4);
  EXPECT_EQ(main.cboRuleAccount.Text.get(), "Gone");
  EXPECT_EQ(built(), "From|Contains||") << "the builder is a new rule's";
  main.lstRules.Choose(5);
  EXPECT_EQ(built(), "Size|LessThan|7|NOT");
  EXPECT_FALSE(program.unsaved.RulesDirty);
  count();
  EXPECT_EQ(main.lblRuleFits.Caption.get(), "can be tried here once there are messages in the lists");
  for (const auto* count : {"-3", "32767"}) {
    platform.written["/home/Rules.ini"] = std::string("[Rules]\nRuleCount=") + count + "\n";
    Program again(platform);
    Main(again);
    again.frmMain.tbrMainButtons["Rules"].click();
    again.frmMain.tbrRules["RulesAdd"].click();
    EXPECT_EQ(again.rules.working.RuleCount, *count == '-' ? 1 : 32767);
  }
}

TEST_F(RulesPageOfTheProgram, TellsWhatTheRuleWouldFit) {
  open();
  checkAll();
  main.tbrRules["RulesAdd"].click();
  const struct {
    std::string where, criteria, fits, notice;
  } cases[] = {{"Subject", "bob", "fits 2 of 4 messages in the lists", ""},
               {"Subject", "x", "fits 0 of 4 messages in the lists", ""},
               {"Size", "ten", "fits 0 of 4 messages in the lists, and can't tell of 4", "No number from 0 to 32767"}};
  for (const auto& [where, criteria, fits, notice] : cases) {
    main.cboWhere.Choose(where);
    main.txtCriteria.Text = criteria;
    EXPECT_THAT(main.lblCriteriaNotice.Caption.get(), HasSubstr(notice.empty() ? "Not in the rule yet" : notice));
    update();
    EXPECT_THAT(main.lblCriteriaNotice.Caption.get(), testing::StartsWith(notice));
    count();
    EXPECT_EQ(main.lblRuleFits.Caption.get(), fits);
    EXPECT_EQ(main.tbrRuleFits["ShowFits"].Enabled.get(), criteria == "bob");
  }
  for (int i = 0; i < 2; ++i) main.tbrRuleUpdate[1]["Undo"].click();
  count();
  main.cboRuleAccount.Choose("Home");
  count();
  program.EditOptions.MessageSort = 1;
  main.mnuTraySounds.Click();
  EXPECT_TRUE(main.tmrRuleFits.Enabled) << "the messages are in another order now";
  count();
  main.tbrRuleFits["ShowFits"].click();
  ASSERT_EQ(program.frmRuleFits.lvwRuleFits.Rows().size(), 1U);
  EXPECT_THAT(program.frmRuleFits.lvwRuleFits.Rows()[0].Cells, ElementsAre("Home", "a@example.org", "bob"));
  checkAll();
  EXPECT_TRUE(program.frmRuleFits.Visible && program.frmRuleFits.lvwRuleFits.Rows().empty()) << "others may be there";
  count();
  EXPECT_EQ(program.frmRuleFits.lvwRuleFits.Rows().size(), 1U) << "it is counted anew";
  save();
  main.tbrMainButtons["Email"].click();
  EXPECT_FALSE(main.tmrRuleFits.Enabled || program.frmRuleFits.Visible);
}

TEST_F(RulesPageOfTheProgram, ComesBackFromTheFileAtItsLongest) {
  open();
  main.tbrRules["RulesAdd"].click();
  std::string ors;
  for (int i = 0; i < longestCriteria / 2; ++i) ors += "OR";
  main.chkNot.Value = std::int16_t{1};
  for (const std::string& criteria : {std::string("x"), ors}) build("Subject", criteria);
  main.txtRuleName.Text = "\"" + std::string(longestRuleName - 2, 'n') + "\"";
  save();
  Program again(platform);
  Main(again);
  EXPECT_EQ(again.rules.live[1].Name, program.rules.live[1].Name);
  EXPECT_EQ(again.rules.live[1].Description, program.rules.live[1].Description);
  EXPECT_EQ(again.rules.live[1].Description[2].size(), 26U + 3U * longestCriteria / 2U);
}

}  // namespace
}  // namespace velmora
