#pragma once

#include <cstddef>
#include <cstdint>

#include "rules/decisions/rules.h"

namespace velmora {

class RuledMessage;
struct Program;

/// What goes on from message to message while rules look through those of an account. The rules are those that were in
/// force when it began: while one's message box stands, the user may save others.
struct RuleWalk {
  RuleSet<Rule> rules;
  std::size_t looked = 0;  ///< bytes that rules have looked through since the event loop last turned
};

/// Marks a message by the rules: the first enabled one for its account that fits it and doesn't say "Ignore" decides.
/// The account's counts of marks move with it. The event loop turns after every few bytes, and where the check was
/// stopped by then, this throws.
void RuleCheck(Program& program, RuleWalk& walk, std::int16_t account, std::int16_t message);

/// The rule fits the message. A rule that can't be evaluated shows a box, and fits no message. Throws where the check
/// was stopped.
bool RuleMatches(Program& program, const Rule& rule, RuledMessage& message);

}  // namespace velmora
