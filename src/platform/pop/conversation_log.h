#pragma once

#include <cstddef>
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
/// failures. Nothing of a listing or a message is told, and never the password: a server may repeat it in any form, so
/// once it has been sent no word of an answer is told but those that many servers use. Nothing happens where there is
/// no log.
class ConversationLog {
 public:
  ConversationLog() = default;
  ConversationLog(LogLine write, std::string_view secret);

  void connecting(const std::string& host, std::uint16_t port, bool secure) const;
  void connected() const;

  /// In the order in which commands go over the line, which is that of their answers.
  void sent(std::string_view command);
  void answered(const Reply& reply);

  void failed(const PopFailure& failure) const;
  void closed() const;

 private:
  std::string own(std::string_view text) const;
  std::string harmless(std::string_view command) const;
  std::string wordsOf(const Reply& reply, bool answersSecret) const;

  LogLine write_;
  std::string secret_;             ///< blank without a log
  bool isShort_ = false;           ///< what is left out of a text would tell it
  bool secretSent_ = false;        ///< the server may know it
  std::size_t awaited_ = 0;        ///< answers to come
  std::size_t secretAnswers_ = 0;  ///< of these, up to the one to the command with the secret
};

}  // namespace velmora::pop
