#pragma once

#include <cstddef>
#include <cstdint>

namespace velmora {

class RuledMessage;
struct Program;
struct Rule;

/// Marks a message by the live rules: the first enabled one for its account that fits it and doesn't say "Ignore"
/// decides. The account's counts of marks move with it.
///
/// `looked` goes on from message to message, from 0: the bytes that rules have looked through since the event loop last
/// turned. It turns after every few, and where the check was stopped by then, this throws.
void RuleCheck(Program& program, std::int16_t account, std::int16_t message, std::size_t& looked);

/// The rule fits the message. A rule that can't be evaluated shows a box, and fits no message. Throws where the check
/// was stopped.
bool RuleMatches(Program& program, const Rule& rule, RuledMessage& message);

}  // namespace velmora
