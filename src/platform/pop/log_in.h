#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>

#include "platform/failure.h"
#include "platform/pop/conversation.h"

namespace velmora::pop {

struct Credentials {
  std::string login, password;
};

/// Names in capitals (RFC 2449 section 5). Empty where the server doesn't tell.
using Capabilities = std::set<std::string>;

/// The server hangs, hangs up or talks nonsense on CAPA.
class CapabilitiesFailure : public PopFailure {
  using PopFailure::PopFailure;
};

/// What the server says of the open mailbox (RFC 1939, STAT).
struct Maildrop {
  std::int32_t count = 0;
  std::int64_t bytes = 0;
};

/// Throws PopFailure with loginRefused where these would inject commands.
void requireSendable(const Credentials& credentials);

/// Reads the greeting. Throws PopFailure with noGreeting, which says what the greeting looks like instead, or with the
/// reason of a refusal.
void greet(Conversation& conversation, bool secure);

/// Throws CapabilitiesFailure.
Capabilities askCapabilities(Conversation& conversation);

/// Sends USER, then PASS. `offered` is what the server told before.
void logIn(Conversation& conversation, const Credentials& credentials, const Capabilities& offered);

Maildrop askMaildrop(Conversation& conversation);

}  // namespace velmora::pop
