#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/pop/conversation_log.h"
#include "platform/pop/patience.h"
#include "platform/pop/reply_reader.h"
#include "platform/pop/transport.h"

namespace velmora::pop {

/// What a conversation is about. Decides how long it may take and the numbers of the failures when the server falls
/// silent or is gone.
enum class Phase { Greeting, LoggingIn, Listing, Working, Leaving };

/// Commands and answers over one connection, in blocking style. No wait goes on for ever (patience.h). Every call that
/// awaits something throws PopFailure when the server is silent, gone or breaks the protocol, or when `close` was
/// called.
class Conversation {
 public:
  /// Called after each wait and each turn of the event loop, at least every 100 ms. May call `close`.
  using WhileWaiting = std::function<void(const Conversation&)>;

  /// `transport` and `whileWaiting`, which may be empty, outlive the conversation. No failure's text shows `secret`,
  /// nor does the log, which may be empty, too.
  Conversation(Transport& transport, Milliseconds timeOut, std::string secret, const WhileWaiting& whileWaiting,
               LogLine log = {})
      : transport_(transport),
        patience_(timeOut),
        whileWaiting_(whileWaiting),
        log_(std::move(log), secret),
        reader_(std::move(secret)) {}

  /// Begins with the phase Greeting.
  void connect(const std::string& host, std::uint16_t port, bool secure);

  /// Logging in goes on within the time of the greeting.
  void enter(Phase phase);

  /// Sends commands, given without their line ends, in one go, and returns at once. Those that were sent ahead aren't
  /// sent again, and no other ones may come between: that throws invalidCallFailure.
  void send(std::span<const std::string> commands);

  /// Sends commands that are to be sent next, in this order, before anybody asks for their answers (RFC 2449 section
  /// 6.6). Who ends the conversation properly reads the answers that nobody has asked for.
  void sendAhead(std::vector<std::string> commands);

  /// The commands that were sent ahead and that nobody has asked for yet.
  const std::deque<std::string>& ahead() const { return ahead_; }

  /// Sends one command and waits for its status line.
  Reply ask(const std::string& command);

  Reply reply();
  void lines(const std::function<void(std::string_view)>& each);
  Delivery message();
  /// Hands it out as it comes in, in place of keeping it.
  void message(const ReplyReader::Take& take);

  /// For work between two waits, as often as it likes: lets the event loop turn where it hasn't for 50 ms. Throws where
  /// `close` was called meanwhile or the program is ending.
  void breathe();

  /// Throws where `close` was called.
  void requireOpen() const;

  /// An answer that was asked for, or the rest of one, is still to come.
  bool isOutstanding() const { return outstanding_ > 0 || insideAnswer_; }

  /// "What happened." followed by the server's own words: the one way to show them.
  std::string quote(std::string_view what, std::string_view words) const { return reader_.quote(what, words); }

  std::int64_t messageBytes() const { return reader_.messageBytes(); }
  std::string_view pending() const { return reader_.pending(); }
  Milliseconds now() const { return transport_.now(); }

  /// Ends the connection at once. Safe at any time, also while the conversation waits.
  void close();
  bool isClosed() const { return closed_; }

 private:
  template <class Take>
  auto await(Take take);
  template <class Take>
  auto awaitRest(Take take);
  void receive();
  std::optional<Milliseconds> limitOf(Phase phase) const;

  Transport& transport_;
  Patience patience_;
  const WhileWaiting& whileWaiting_;
  ConversationLog log_;
  ReplyReader reader_;
  Phase phase_ = Phase::Greeting;
  Milliseconds lastTurn_{};
  std::deque<std::string> ahead_;
  std::size_t outstanding_ = 0;
  bool insideAnswer_ = false;
  bool closed_ = false;
};

}  // namespace velmora::pop
