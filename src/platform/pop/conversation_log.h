#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/failure.h"
#include "platform/pop/reply_reader.h"

namespace velmora::pop {

/// Takes one line of a protocol log.
using LogLine = std::function<void(std::string_view line)>;

/// Tells a log what is said in one conversation: where it leads, its commands, the status lines of its answers, its
/// failures. Nothing of a listing or a message is told, and never a password: a server may repeat any that it has ever
/// heard in any form, so no word of an answer is told but those that many servers use, and no number. Nothing happens
/// where there is no log.
class ConversationLog {
 public:
  ConversationLog() = default;
  ConversationLog(LogLine write, std::string_view secret);

  void connecting(const std::string& host, std::uint16_t port, bool secure) const;
  void connected() const;

  void sent(std::string_view command) const;
  void answered(const Reply& reply) const;

  void failed(const PopFailure& failure) const;
  void closed() const;

 private:
  std::string own(std::string_view text) const;
  std::string harmless(std::string_view command) const;

  LogLine write_;
  std::string secret_;    ///< blank without a log
  bool isShort_ = false;  ///< what is left out of a text would tell it
};

}  // namespace velmora::pop
