#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "messages/message_store.h"
#include "rules/rules.h"

namespace velmora {

/// A message as rules look at it. Its texts in capitals are made when a rule first asks for them, once for all rules.
/// The message outlives it and doesn't change meanwhile.
class RuledMessage {
 public:
  explicit RuledMessage(const MailMessage& message) : message_(message) {}

  const MailMessage& message() const { return message_; }

  /// One of the four text fields, in capitals.
  const std::string& inCapitals(std::string MailMessage::*field);

 private:
  struct Capitals {
    std::string MailMessage::*field;
    std::string text;
  };

  const MailMessage& message_;
  std::array<std::optional<Capitals>, 4> capitals_;
};

/// The rule fits the message. Throws a RunTimeFailure where an entry can't be taken apart, or where a size is no number
/// of 16 bits; every entry is tested, so that such an entry spoils its rule wherever it stands.
bool ruleFits(const Rule& rule, RuledMessage& message);

}  // namespace velmora
