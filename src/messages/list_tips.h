#pragma once

#include <cstdint>

#include "messages/email_page.h"

namespace velmora {

struct Program;

/// What the pointer does over the list.
struct ListPointer {
  bool ItemUnderPointer = false;     ///< its last event met a row
  std::int16_t HoverMessage = 0;     ///< the row under it, 0 for none
  std::int16_t TipMessage = 0;       ///< the message that the list's tip was last worked out for
  std::int16_t ColumnZone = noZone;  ///< the zone that it was worked out for
};

/// The pointer moved over the message list: notes the row, and offers the whole text of a sender, recipients or a
/// subject that its column cuts off, or tells which rule has marked the message whose picture lies under it.
void lvwEmail_MouseMove(Program& program, std::int32_t row, std::int32_t x);

/// No tip is offered until the pointer moves again: what it lies over may be another message now.
void ForgetListTip(Program& program);

}  // namespace velmora
