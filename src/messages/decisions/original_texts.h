#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "messages/decisions/message_store.h"
#include "platform/mail_bounds.h"
#include "platform/platform.h"

namespace velmora {

/// Bytes of the longest message that an attachment is taken out of: in one that was cut when it was listed, other parts
/// may stand at the places that were told.
inline constexpr std::size_t longestWithAttachment = mail_bounds::message;

/// Why a message, or what is attached to it, could not be saved as the server has it.
enum class OriginalTrouble {
  NoIdentifier,
  Gone,
  NotUnique,
  TooLong,  ///< for an attachment to be taken out of it
  NoAttachment,
  NotWritten,
  Busy,  ///< something else began while the user was asked
};

Question originalNotSaved(std::string_view appTitle, OriginalTrouble trouble);

/// Where to save a message of this subject.
FileQuestion originalQuestion(std::string_view subject);

/// Where to save an attachment. Its name is a stranger's: it is cleaned, and keeps its ending where that is one.
FileQuestion attachmentQuestion(const Attachment& attachment);

/// One line for each attachment, each different from the others: "1. invoice.pdf (application/pdf, 120 KB)".
std::vector<std::string> attachmentLines(const std::vector<Attachment>& attached);

}  // namespace velmora
