#pragma once

#include <string>
#include <string_view>

#include "messages/decisions/message_store.h"

namespace velmora {

/// The header as it came, a blank line and the text of the body, as the raw view shows them.
std::string rawText(const MailMessage& message);

/// What a message file holds: the same, and a line end.
std::string messageFileText(const MailMessage& message);

/// The name proposed for a message's file: its subject without the characters that no file name may hold, 200 bytes
/// at most.
std::string proposedFileName(std::string_view subject);

}  // namespace velmora
