#pragma once

#include <cstdint>
#include <span>

#include "platform/pop/session.h"

namespace velmora::pop {

/// Says good-bye. Waits no longer than 3 seconds for the answer and never fails.
void quit(Conversation& conversation);

/// Has the messages of these numbers deleted (RFC 1939 sections 5 and 6) and says good-bye. All go or none: where the
/// server refuses to mark one, the marks are taken back. Throws PopFailure with messageRefused where the server refused
/// any of it, and others when it is not sure to be done.
void deleteAndQuit(const Channel& channel, std::span<const std::int32_t> numbers);

}  // namespace velmora::pop
