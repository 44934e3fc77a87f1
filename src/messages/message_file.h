#pragma once

#include <string>
#include <string_view>

#include "messages/message_store.h"

namespace velmora {

/// The header as it came, a blank line and the text of the body, as the raw view shows them.
std::string rawText(const MailMessage& message);

/// What a message file holds: the same, and a line end.
std::string messageFileText(const MailMessage& message);

/// The name proposed for a message's file: its subject without the characters that no file name may hold, 200 bytes
/// at most.
std::string proposedFileName(std::string_view subject);

/// A name that a stranger's subject may give to a new file without the user having confirmed it: neither that of a
/// hidden file nor what a command would take for an option.
bool isHarmlessFileName(std::string_view name);

}  // namespace velmora
