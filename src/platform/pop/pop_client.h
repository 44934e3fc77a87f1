#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/date_time.h"
#include "platform/mail_bounds.h"
#include "platform/mail_reader.h"
#include "platform/pop/conversation_log.h"
#include "platform/pop/server_habits.h"
#include "platform/pop/transport.h"

namespace velmora {

class PopClient;

/// Where a connection stands (RFC 1939 section 3).
enum class PopState { Closed, Connecting, Authorization, Transaction, Update };

/// One message of the open mailbox. After ListMessages only Size and Uid hold something, after FetchAll all do.
struct PopMessage {
  /// Bytes: as announced after ListMessages (0 where the server doesn't tell), as they came after FetchAll.
  std::int32_t Size = 0;
  std::string Uid;  ///< unique identifier (RFC 1939 UIDL), or one made from the header where the server has none; blank
                    ///< where there is no header either
  ReadMail Mail;
  bool Deleted = false;  ///< set it to have the server delete the message when Disconnect ends the connection
};

/// What a client tells while it works. Called on the caller's own thread, in between, while a blocking call runs. A
/// handler may set another receiver, may let go of the client, which lives on until the call ends, and may call
/// Disconnect: the running call then fails. It may not start another blocking call of the same client.
class IPopClientNotify {
 public:
  virtual ~IPopClientNotify() = default;
  virtual void Connected(PopClient& /*owner*/) {}
  /// An open connection ended: code 0 for an end that was asked for, else the number of the failure that ended it.
  virtual void Disconnected(PopClient& /*owner*/, std::int32_t /*code*/, const std::string& /*text*/) {}
  /// A blocking call ended, well (0) or by this failure.
  virtual void Done(PopClient& /*owner*/, std::int32_t /*code*/, const std::string& /*text*/) {}
  /// Bytes received so far and expected in all, during FetchAll and FetchOriginal. Raised at most every 50 ms, about
  /// every 100 ms while nothing comes, and once when all is in, before the last message is told to be received. The
  /// position never falls and may pass the total.
  virtual void Progress(PopClient& /*owner*/, std::int32_t /*position*/, std::int32_t /*total*/) {}
  /// A message is in whole. Told once for each place in the mailbox, in order, also where a fetch had to start over.
  virtual void Received(PopClient& /*owner*/, const PopMessage& /*message*/) {}
  /// The certificate that a secure server showed, as text, with what is wrong with it (0 and blank: nothing).
  virtual void HostCertificate(PopClient& /*owner*/, const std::string& /*certificate*/, std::int32_t /*code*/,
                               const std::string& /*text*/) {}
  virtual void StateChange(PopClient& /*owner*/, PopState /*oldState*/) {}
};

/// The messages of the open mailbox, numbered from 0.
class PopMessages {
 public:
  explicit PopMessages(PopClient& client) : client_(client) {}

  /// Known right after Connect. Throws overflowFailure where the mailbox holds more than 32767 messages.
  std::int16_t Count() const;

  /// Stays valid, and readable after Disconnect, until the next Connect. Throws subscriptFailure.
  PopMessage& Item(std::int16_t index);

  /// Brings in every message whole. Blocks while the event loop turns. Throws PopFailure, which leaves the messages
  /// that came before it. A failure in a pipelined exchange is met with one new login before it is final.
  void FetchAll();

  /// Reads sizes and identifiers without the messages; where the server has none, they cost a look at the header of
  /// every message, unless the caller wants only what is listed. Blocks while the event loop turns. Throws PopFailure.
  enum class Identifiers { All, Listed };
  void ListMessages(Identifiers wanted = Identifiers::All);

  /// Takes the next bytes of a message; false ends it.
  using Take = std::function<bool(std::string_view bytes)>;

  /// Hands out one message of up to 2^31 - 1 bytes exactly as the server has it, piece by piece, and keeps none of it.
  /// To be called after ListMessages or FetchAll, whose listing gives the message's number. Tells the progress as
  /// FetchAll does, in bytes of this message: the total is 0 where the server doesn't tell its size. Blocks while the
  /// event loop turns. Throws PopFailure, also where `take` wants no more, which ends the connection: what came until
  /// then is of no use. Nothing is tried a second time. Throws subscriptFailure.
  void FetchOriginal(std::int16_t index, const Take& take);

 private:
  PopClient& client_;
};

/// A POP3 client (RFC 1939, 2449) that blocks its caller while the event loop turns. Made by `std::make_shared`; it
/// keeps itself alive inside a blocking call, so a notify handler may let go of it. A blocking call inside another one
/// of the same client throws invalidCallFailure; Disconnect may be called anywhere.
class PopClient : public std::enable_shared_from_this<PopClient> {
 public:
  /// What a client needs of the outside. The references outlive all clients.
  struct Surroundings {
    std::function<std::unique_ptr<pop::Transport>()> makeTransport;
    const MailReader& reader;
    std::function<DateTime()> now;
    ServerHabits& habits;
    std::size_t room = mail_bounds::mailbox;  ///< bytes of the texts that are kept of a mailbox
    /// Asked for each connection: takes the lines of the protocol log, or is empty.
    std::function<pop::LogLine()> log = {};
  };

  explicit PopClient(const Surroundings& surroundings);
  ~PopClient();
  PopClient(const PopClient&) = delete;
  PopClient& operator=(const PopClient&) = delete;

  /// Where to connect. Setting any of these describes a new connection and so clears LastError.
  void HostName(const std::string& host);
  void Port(std::int32_t port);
  void Login(const std::string& login);
  void Password(const std::string& password);
  void Timeout(std::int16_t seconds);  ///< without a byte; less than 1 counts as 1
  void Security(int security);         ///< 0 plain, 3 TLS from the first byte

  /// Which certificates of secure servers are taken. With one that isn't, Connect fails before anything is said.
  void Demand(const CertificateDemand& demand);

  /// The one that the last secure connection showed.
  const ServerCertificate& Certificate() const;

  /// Whether the listing is likely to be wanted behind Connect, which may then ask for it along with the count and so
  /// save a round trip. It is at first.
  void ListAhead(bool likely);

  void Blocking(bool blocking);  ///< only true is offered: anything else throws invalidCallFailure
  void AuxiliaryMode(int mode);  ///< only 0 is offered: anything else throws invalidCallFailure

  void Notification(IPopClientNotify* receiver);  ///< not owned

  /// Logs in and learns the count. A connection that is open is ended first, without deleting anything. Throws
  /// PopFailure; throws invalidCallFailure for a port outside 1 to 65535.
  void Connect();

  /// Ends the connection, and makes deletions final, which is sure only when the server has answered QUIT with +OK:
  /// with messages marked as Deleted anything else throws PopFailure. Without, it never fails, and does nothing where
  /// nothing is connected. Inside a running call it ends the connection at once and throws nothing: that call fails.
  void Disconnect();

  PopMessages& Messages();

  /// Number and text of the last failure that came from this client, 0 and blank where there was none.
  std::int32_t LastError() const;
  const std::string& ErrorText() const;

 private:
  friend class PopMessages;
  class Implementation;
  std::unique_ptr<Implementation> implementation_;
};

}  // namespace velmora
