#pragma once

#include <cstdint>

#include "rules/decisions/rule_builder.h"

namespace velmora {

struct Button;
struct Program;

/// Ties the builder's controls to what they do.
void ConnectBuilder(Program& program);

/// What stands in the builder now.
EntryParts builtEntry(const Program& program);

/// Gives the comparison and the criteria what belongs to the chosen field.
void FillCondition(Program& program);

/// The builder as it is for a rule without entries.
void ClearBuilder(Program& program);

/// Takes the entries of the rule showing apart, puts the last one back into the builder, and shows them.
void ShowEntries(Program& program);

// The buttons beside the description.
void UpdateDescription(Program& program);
void ClearDescription(Program& program);
void UndoDescription(Program& program);
void RedoDescription(Program& program);

}  // namespace velmora
