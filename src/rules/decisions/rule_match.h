#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "messages/decisions/message_store.h"
#include "rules/decisions/rules.h"

namespace velmora {

/// A message as rules look at it. Its texts in capitals are made when a rule first asks for them, once for all rules.
/// The message outlives it and doesn't change meanwhile.
class RuledMessage {
 public:
  /// Told before each test of a text how many bytes it has. May throw.
  using Looking = std::function<void(std::size_t bytes)>;

  explicit RuledMessage(
      const MailMessage& message, Looking looking = [](std::size_t) {})
      : message_(message), looking_(std::move(looking)) {}

  const MailMessage& message() const { return message_; }

  /// One of the four text fields, for a test.
  const std::string& original(std::string MailMessage::*field) const {
    looking_((message_.*field).size());
    return message_.*field;
  }

  /// The same, in capitals.
  const std::string& inCapitals(std::string MailMessage::*field);

 private:
  struct Capitals {
    std::string MailMessage::*field;
    std::string text;
  };

  const MailMessage& message_;
  Looking looking_;
  std::array<std::optional<Capitals>, 4> capitals_;
};

/// The rule fits the message. Throws a RunTimeFailure where an entry can't be taken apart, or where a size is no number
/// of 16 bits, and what the message's Looking throws; every entry is tested, so that such an entry spoils its rule
/// wherever it stands.
bool ruleFits(const Rule& rule, RuledMessage& message);

}  // namespace velmora
