#pragma once

#include <QHostAddress>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/failure.h"
#include "platform/qt/services/tcp_call.h"
#include "platform/qt/services/waiting.h"

namespace velmora {

/// Connects to whichever address of a host answers first: each next one is tried a little after the one before, so
/// that a dead address costs a moment and not a time-out (RFC 8305).
class AddressRace {
 public:
  explicit AddressRace(Waiting& waiting) : waiting_(waiting) {}

  /// Looks the host up and connects. Returns the descriptor of the connection, which the caller closes. Throws
  /// PopFailure, and so does a race that `stop` ends.
  int run(const std::string& host, std::uint16_t port, std::chrono::milliseconds timeOut);

  /// Connects to one of these addresses, of which there is at least one.
  int run(const std::vector<QHostAddress>& addresses, std::uint16_t port, std::chrono::milliseconds timeOut);

  void stop() { stopped_ = true; }

 private:
  void begin(std::chrono::milliseconds timeOut);
  int runTo(const std::vector<QHostAddress>& addresses, std::uint16_t port);
  std::vector<QHostAddress> lookUp(const std::string& host);
  std::optional<int> takeWinner();
  bool allFailed() const;
  bool isUndecided() const;
  [[noreturn]] void fail(const PopFailure& failure);
  std::chrono::milliseconds left() const;
  void wait(std::chrono::milliseconds longest);

  Waiting& waiting_;
  std::vector<std::unique_ptr<TcpCall>> runners_;
  std::chrono::steady_clock::time_point deadline_;
  bool stopped_ = false;
};

}  // namespace velmora
