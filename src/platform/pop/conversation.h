#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "platform/pop/patience.h"
#include "platform/pop/reply_reader.h"
#include "platform/pop/transport.h"

namespace velmora::pop {

/// What a conversation is about. Decides the numbers of the failures when the server falls silent or is gone.
enum class Phase { Greeting, LoggingIn, Working };

/// Commands and answers over one connection, in blocking style. Each wait ends by the time-out. Every call that awaits
/// something throws PopFailure when the server is silent, gone or breaks the protocol, or when `close` was called.
class Conversation {
 public:
  /// Called after each wait, at least every 100 ms. May call `close`.
  using WhileWaiting = std::function<void(const Conversation&)>;

  /// `transport` and `whileWaiting`, which may be empty, outlive the conversation.
  Conversation(Transport& transport, Milliseconds timeOut, const WhileWaiting& whileWaiting)
      : transport_(transport), patience_(timeOut), whileWaiting_(whileWaiting) {}

  void connect(const std::string& host, std::uint16_t port, bool secure);

  void enter(Phase phase) { phase_ = phase; }
  void shortenTimeOut(Milliseconds timeOut) { patience_.shorten(timeOut); }

  /// Sends whole commands with their line ends, and returns at once.
  void send(std::string_view commands, std::size_t count);

  /// Sends one command, given without its line end, and waits for its status line.
  Reply ask(std::string_view command);

  Reply reply();
  void lines(const std::function<void(std::string_view)>& each);
  Delivery message();

  /// Throws where `close` was called.
  void requireOpen() const;

  /// An answer, or the rest of one, is still to come.
  bool isOutstanding() const { return outstanding_ > 0 || insideAnswer_; }

  std::int64_t messageBytes() const { return reader_.messageBytes(); }
  std::string_view pending() const { return reader_.pending(); }
  Milliseconds now() const { return transport_.now(); }

  /// Ends the connection at once. Safe at any time, also while the conversation waits.
  void close();
  bool isClosed() const { return closed_; }

 private:
  template <class Take>
  auto await(Take take);
  void receive();

  Transport& transport_;
  Patience patience_;
  const WhileWaiting& whileWaiting_;
  ReplyReader reader_;
  Phase phase_ = Phase::Greeting;
  std::size_t outstanding_ = 0;
  bool insideAnswer_ = false;
  bool closed_ = false;
};

}  // namespace velmora::pop
