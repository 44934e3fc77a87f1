#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/failure.h"
#include "platform/pop/transport.h"

namespace velmora::test {

using pop::Milliseconds;

/// What answers at the other end of a MemoryTransport, line by line.
class MemoryPeer {
 public:
  virtual ~MemoryPeer() = default;

  /// A connection was opened. Returns what the peer says first.
  virtual std::string opened() = 0;

  /// Bytes came in, as the client sent them in one go. Returns what the peer says to it.
  virtual std::string heard(std::string_view bytes) = 0;

  /// The peer hangs up once all that it said is received.
  virtual bool hangsUp() const = 0;
};

/// How a line in memory behaves, and what went over it. Time is virtual: silence costs none.
struct MemoryLine {
  std::size_t chunk = std::size_t{1} << 20U;  ///< most bytes that one receive brings
  Milliseconds pace{0};                       ///< time from one chunk to the next
  std::optional<std::size_t> dropAfter;       ///< the connection is gone after so many bytes from the peer
  std::optional<std::size_t> silentAfter;     ///< nothing comes any more after so many bytes from the peer
  int faultyConnections = 1;                  ///< how many connections the two lines above hold for
  std::optional<PopFailure> connectFailure;   ///< thrown by connect
  std::function<void()> onConnect;            ///< runs inside connect, as an event loop would
  std::function<void()> onReceive;            ///< runs inside receive, as an event loop would
  std::function<void()> onTurn;               ///< runs inside turn, as an event loop would
  bool ending = false;                        ///< the program is
  ServerCertificate certificate;

  Milliseconds clock{0};
  int connections = 0;
  bool open = false;               ///< the client has not hung up
  std::vector<std::string> sends;  ///< what was sent, one entry for each send, over all connections
};

/// A Transport without a network. The line and the peer outlive it.
class MemoryTransport : public pop::Transport {
 public:
  MemoryTransport(MemoryLine& line, MemoryPeer& peer) : line_(line), peer_(peer) {}

  void connect(const std::string& host, std::uint16_t port, bool secure, Milliseconds timeOut) override;
  ServerCertificate certificate() const override { return line_.certificate; }
  void send(std::string_view bytes) override;
  std::string receive(Milliseconds wait) override;
  bool turn() override {
    if (line_.onTurn) line_.onTurn();
    return !line_.ending;
  }
  bool isOpen() const override { return line_.open; }
  void abort() override { line_.open = false; }
  Milliseconds now() const override { return line_.clock; }

 private:
  std::size_t deliverable() const;
  bool isFaulty() const { return line_.connections <= line_.faultyConnections; }
  bool isOver() const;
  std::string deliver();

  MemoryLine& line_;
  MemoryPeer& peer_;
  std::string said_;
  std::size_t delivered_ = 0;
  Milliseconds nextChunk_{0};
};

}  // namespace velmora::test
