#pragma once

#include <cstdint>

namespace velmora {

class RuledMessage;
struct Program;
struct Rule;

/// Marks a message by the live rules: the first enabled one for its account that fits it and doesn't say "Ignore"
/// decides. The account's counts of marks move with it.
void RuleCheck(Program& program, std::int16_t account, std::int16_t message);

/// The rule fits the message. A rule that can't be evaluated shows a box, and fits no message.
bool RuleMatches(Program& program, const Rule& rule, RuledMessage& message);

}  // namespace velmora
