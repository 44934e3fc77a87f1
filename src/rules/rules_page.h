#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/controls/check_box.h"
#include "platform/controls/check_list.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/number_box.h"
#include "platform/controls/option_group.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/text_box.h"
#include "platform/controls/timer.h"
#include "platform/controls/toolbar.h"
#include "rules/decisions/rule_builder.h"

namespace velmora {

struct Program;

/// The controls of the Rules page, which edits the working set: the rules in a list, and all of the one that is chosen.
/// Its description is built of entries, each out of a field, a comparison and a criteria.
struct RulesPage {
  Frame fraRulesToolbar;
  Toolbar tbrRules{"imlRuleIcons",
                   {{"RulesAdd", "Add Rule                ", "Add a New Rule", "RulesAdd"},
                    {"RulesDelete", "Delete Rule            ", "Delete Selected Selected Rule", "RulesDelete"},
                    {"RulesImport", "Import Rules           ", "Import Rules from a Rules File", "RulesImport"},
                    {"RulesRename", "Rename Rules File  ", "Rename the Rules FileName", "RulesRename"}}};

  Frame fraRules;  ///< everything below but lblNoRules
  Label lblNoRules{"There are no rules yet. Please use Add Rule to create a Rule", false};
  CheckList lstRules;
  Toolbar tbrMoveRule{"imlMoveButtons", {{"Up", "", "Move Rule Up", "Up"}, {"Down", "", "Move Rule Down", "Down"}}};
  Label lblRulesFileName;

  Frame fraRule{"Rule: None"};
  TextBox txtRuleName{longestRuleName};
  ComboBox cboRuleAccount;
  ComboBox cboWhere;
  ComboBox cboCondition;
  CheckBox chkNot{"Not"};
  ComboBox cboBoolean{std::vector<std::string>{"AND", "OR"}, "AND"};
  Label lblCriteria;
  TextBox txtCriteria{longestCriteria};
  Label lblCriteriaNotice;  ///< what is to be said of what stands in the builder, blank where nothing is
  std::array<Toolbar, 2> tbrRuleUpdate{
      {{"imlRuleIcons",
        {{"Update", "Update Description ", "Update Rule Description", "Update"},
         {"Clear", "Clear Description    ", "Clear Rule Description ", "Clear"}}},
       {"imlRuleIcons", {{"Undo", "Undo", "Undo Update", "Undo"}, {"Redo", "Redo", "Redo Update", "Redo"}}}}};
  Label lblRuleDescription{"Description:"};
  Label lblRuleDescEntries;
  RichTextBox txtRuleDescription;
  Label lblRuleFits;  ///< how many of the messages in the lists the rule would fit
  Toolbar tbrRuleFits{"imlRuleIcons", {{"ShowFits", "Show Them", "Show the Messages that this Rule Fits", "ShowFits"}}};
  Timer tmrRuleFits{0, false};  ///< on while the messages are gone through

  Frame fraAction{"Action"};
  OptionGroup optRuleAction{{"Delete from Server", "Mark as Spam   (Delete Later)", "Ignore"}};

  Frame fraNotify{"Notification - Applies to All Rules"};
  CheckBox chkRuleNotify{"Show Rule Report Summary"};
  CheckBox chkRuleNotifyNew{"New Messages Only"};
  Label lblRuleNotifyTime{"Show for"};
  NumberBox txtRuleNotifyTime{std::int16_t{0}, std::int16_t{59}, 1, false, std::int16_t{30}};
  Label lblRuleNotifySeconds{"seconds."};
};

/// What the page keeps beside its controls.
struct RulesPageState {
  bool RuleLoading = false;  ///< the program fills the controls itself: their changes do nothing
  bool putOff = false;       ///< the user has left for later what should have reached the file already
  bool asking = false;       ///< a dialog of the page waits for the user, which a screen reader can press on behind
  /// The parts of each entry of the rule showing, as it was built or taken apart, from slot 1 on.
  std::array<EntryParts, mostEntries + 1> Entries;
};

/// Ties the page's controls to what they do.
void ConnectRulesPage(Program& program);

/// Fills the page from the live set. Changes that were not saved are gone.
void LoadRulePage(Program& program);

/// Fills the page from the working set.
void ShowRules(Program& program);

/// Fills the page from rule `number` of the working set, 0 for none. What could be redone is forgotten.
void ShowRule(Program& program, std::int16_t number);

/// Compares the working set with the live one. A page that differs can be left by saving or cancelling only.
void CheckRulesDirty(Program& program);

/// Fills the list of accounts that a rule can be for. No rule changes by that.
void FillRuleAccounts(Program& program);

}  // namespace velmora
