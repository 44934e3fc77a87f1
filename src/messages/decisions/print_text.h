#pragma once

#include <cstdint>
#include <vector>

#include "messages/decisions/message_store.h"
#include "platform/printing.h"

namespace velmora {

/// What is printed of a message: its four fields with bold labels, a rule, and the text of the tab that shows: the
/// body, or the whole raw form.
std::vector<PrintRun> printRuns(const MailMessage& message, bool rawShown);

/// Margins of a page, in twips.
struct PrintMargins {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
};

/// How long the lines of a text are made that is laid out for these margins.
std::int32_t fitRichTextToPrinter(const Paper& paper, const PrintMargins& margins);

/// Where a text goes that is laid out for lines of this length and placed by these margins, which are measured from the
/// sheet's edge; but what the printer can't print on is left free in any case.
PrintArea printArea(const Paper& paper, std::int32_t lineWidth, const PrintMargins& margins);

}  // namespace velmora
