#pragma once

namespace velmora {

struct Program;

/// Adds a rule behind the others and shows it. What was not saved of the others stays.
void AddRule(Program& program);

/// Deletes the rule showing, after a question, and saves all that the page holds.
void DeleteRule(Program& program);

/// Exchanges the rule showing with the one before it or behind it.
void MoveRule(Program& program, bool up);

/// Saves all that the page holds. A message refuses a rule showing that has no name or no entries; nothing is saved
/// then.
void SaveRules(Program& program);

/// Gives up what was not saved. What should have reached the file at once is put off only: quitting asks about it.
void CancelRules(Program& program);

/// Asks what is to become of rules that were not saved, if there are any. Returns whether the page may be left; not so
/// where the user wants to return to it, where they could not be saved, and while he is asked already.
bool SettleRules(Program& program);

}  // namespace velmora
