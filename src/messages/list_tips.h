#pragma once

#include <cstdint>

namespace velmora {

struct Program;

/// The pointer moved over the message list: notes the row, and offers the whole text of a sender, recipients or a
/// subject that its column cuts off.
void lvwEmail_MouseMove(Program& program, std::int32_t row, std::int32_t x);

/// No tip is offered until the pointer moves again: what it lies over may be another message now.
void ForgetListTip(Program& program);

}  // namespace velmora
