#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/failure.h"
#include "platform/pop/conversation.h"
#include "platform/pop/server_habits.h"

namespace velmora::pop {

struct Credentials {
  std::string login, password;
};

/// The server hangs, hangs up or talks nonsense on CAPA.
class CapabilitiesFailure : public PopFailure {
  using PopFailure::PopFailure;
};

/// The server refuses the user name or password.
class CredentialsRefusal : public PopFailure {
 public:
  CredentialsRefusal(const std::string& text, bool isSure)
      : PopFailure(pop_failure::loginRefused, text), isSure_(isSure) {}

  /// It says by a code that these are to blame (RFC 3206 section 4), and nothing else.
  bool isSure() const { return isSure_; }

 private:
  bool isSure_;
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

/// What askUtf8, where it is wanted, and logIn send, in that order.
std::vector<std::string> logInCommands(const Credentials& credentials, bool withUtf8);

/// Sends UTF8 (RFC 6856 section 2.1). Returns whether the server takes it.
bool askUtf8(Conversation& conversation);

/// Sends USER, then PASS. `offered` is what the server told before. Throws CredentialsRefusal, or PopFailure for any
/// other reason.
void logIn(Conversation& conversation, const Credentials& credentials, const Capabilities& offered);

/// What askMaildrop sends.
inline constexpr const char* maildropCommand = "STAT";

Maildrop askMaildrop(Conversation& conversation);

}  // namespace velmora::pop
