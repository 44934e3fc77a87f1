#pragma once

#include <QHostAddress>
#include <QSocketNotifier>
#include <cstdint>
#include <functional>
#include <optional>

namespace velmora {

/// One call to one address: it makes one connection or none. Qt's sockets call again where a connection is reset before
/// they have seen it stand, each time with a new one, hundreds of times over.
class TcpCall {
 public:
  /// Calls at once. `ended` is called, while the event loop turns, when that has come to an end; not where the address
  /// can't be called at all, which is known at once.
  TcpCall(const QHostAddress& address, std::uint16_t port, std::function<void()> ended);
  ~TcpCall();
  TcpCall(const TcpCall&) = delete;
  TcpCall& operator=(const TcpCall&) = delete;

  enum class State { Calling, Connected, Failed };
  State state() const { return state_; }

  /// The system's number of what made it fail.
  int error() const { return error_; }

  /// Hands the descriptor of the connection over, once it stands; the taker closes it.
  int take();

 private:
  void open(const QHostAddress& address, std::uint16_t port);
  void end(int error);

  State state_ = State::Calling;
  int error_ = 0;
  int descriptor_ = -1;
  std::function<void()> ended_;
  std::optional<QSocketNotifier> answered_;
};

}  // namespace velmora
