#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "support/memory_transport.h"

namespace velmora::test {

struct MemoryMessage {
  std::string uid;
  std::string text;  ///< header, blank line and body with line ends CR LF, as they go over the line but for the dots
};

/// A POP3 server in memory with one mailbox, for one connection at a time. A test fills its members, hands
/// `makeTransport` to a PopClient and reads back what went on. It outlives its transports. Settings may change at any
/// time; `messages` is taken over as the session's snapshot when a client logs in, and loses the deleted ones at QUIT.
class MemoryServer : public MemoryPeer {
 public:
  /// An answer that lets the client wait for ever, and one that ends the connection.
  static inline const std::string silence;
  static inline const std::string hangUp = "\1hang up";

  MemoryLine line;  ///< how the bytes travel: chunks, drops, silence, time, hooks

  std::map<std::string, std::string> users = {{"user", "secret"}};  ///< passwords by login
  std::vector<MemoryMessage> messages;
  std::string greeting = "+OK ready\r\n";
  std::vector<std::string> capabilities = {"USER", "TOP", "UIDL"};
  bool pipelining = false;                 ///< announces PIPELINING (and stands it, but for the next two)
  bool hearsOnlyFirst = false;             ///< takes only the first command of what is sent in one go
  std::optional<std::size_t> hearsAtMost;  ///< hangs up where more bytes are sent in one go

  /// Raw answers to a whole command line ("RETR 2"), or to all of one verb ("RETR"), instead of the right ones.
  std::map<std::string, std::string> answers;

  std::vector<std::string> commands;  ///< the command lines heard, over all connections
  int logins = 0;

  std::unique_ptr<pop::Transport> makeTransport() { return std::make_unique<MemoryTransport>(line, *this); }

  std::string opened() override;
  std::string heard(std::string_view bytes) override;
  bool hangsUp() const override { return hangsUp_; }

 private:
  std::string answer(const std::string& command);
  std::string serve(const std::string& verb, const std::string& argument);
  std::string capa() const;
  std::string pass(const std::string& password);
  std::string list(const std::string& verb) const;
  std::string give(const std::string& verb, const std::string& argument);
  std::string quit();

  std::vector<MemoryMessage> snapshot_;
  std::set<std::size_t> deleted_;
  std::string user_;
  bool loggedIn_ = false;
  bool hangsUp_ = false;
};

}  // namespace velmora::test
