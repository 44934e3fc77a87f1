#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/pop/conversation.h"
#include "platform/pop/log_in.h"
#include "platform/pop/pop_client.h"
#include "platform/pop/transport.h"

namespace velmora::pop {

/// Where to log in, and how.
struct Server {
  std::string host;
  std::int32_t port = 110;
  Credentials credentials;
  Milliseconds timeOut{10'000};
  bool secure = false;
  CertificateDemand demand;
  bool listAhead = true;  ///< the listing is likely to be wanted: it is asked for along with the count

  /// The key under which ServerHabits knows it.
  std::string key() const { return host + ":" + std::to_string(port); }
};

/// What a job needs of the session: it is one login's, and a new one after a recovery.
struct Channel {
  Conversation& conversation;
  bool pipelined;
  Maildrop maildrop;
};

/// A login that lasts: it connects anew where a server doesn't stand what it announces, and keeps that in mind.
class Session {
 public:
  struct Events {
    std::function<void(PopState)> entered;
    std::function<void(const ServerCertificate&)> certificate;
    std::function<LogLine()> log = {};  ///< for the conversation that begins
  };

  /// The references outlive the session.
  Session(Transport& transport, Server server, ServerHabits& habits, Events events);

  /// Logs in and learns what the mailbox holds.
  void open();

  const Maildrop& maildrop() const { return maildrop_; }

  using Job = std::function<void(const Channel&)>;

  /// Runs a job. Where it fails in a pipelined exchange for any reason but a refusal, it is run once more over a new
  /// connection, one by one.
  void run(const Job& job, const Conversation::WhileWaiting& whileWaiting);

  /// Runs a job that can't be run a second time.
  void runOnce(const Job& job, const Conversation::WhileWaiting& whileWaiting);

  /// Has the messages of these numbers deleted and says good-bye. Throws PopFailure where that is not sure to be done;
  /// without numbers it never does.
  void leave(std::span<const std::int32_t> deletions);

  /// Ends the connection at once. Safe at any time; what runs then fails.
  void close();
  bool isClosed() const { return !conversation_ || conversation_->isClosed(); }

 private:
  /// What may be made use of where a server announces it, and whether it is asked for that.
  struct Manner {
    bool capa, utf8;
  };

  void openInTwoAttempts();
  void connectAndLogIn(const Manner& manner);
  void examineCertificate();
  void authorize(const Manner& manner);
  Manner withoutWhatFailed(Manner manner);
  void learn(const Manner& manner);
  void openAgainAfter(const PopFailure& failure);
  ServerHabit& habit() { return habits_[server_.key()]; }
  Utf8Habit& utf8Habit();
  Channel channel() { return {*conversation_, pipelined_, maildrop_}; }

  Transport& transport_;
  Server server_;
  ServerHabits& habits_;
  Events events_;
  Conversation::WhileWaiting whileWaiting_;
  std::optional<Conversation> conversation_;
  Maildrop maildrop_;
  Announcement announced_;
  bool sentUtf8_ = false;  ///< an attempt has come to a login that UTF8 may be part of
  bool loginPipelined_ = false;
  bool loginWithUtf8_ = false;
  bool pipelined_ = false;
};

}  // namespace velmora::pop
