#pragma once

#include <QHostAddress>
#include <QSslSocket>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/qt/services/waiting.h"

namespace velmora {

/// Connects to whichever address of a host answers first: each next one is tried a little after the one before, so
/// that a dead address costs a moment and not a time-out (RFC 8305).
class AddressRace {
 public:
  explicit AddressRace(Waiting& waiting) : waiting_(waiting) {}

  /// Looks the host up and connects. Throws PopFailure, and so does a race that `stop` ends.
  std::unique_ptr<QSslSocket> run(const std::string& host, std::uint16_t port, std::chrono::milliseconds timeOut);

  /// Connects to one of these addresses, of which there is at least one.
  std::unique_ptr<QSslSocket> run(const std::vector<QHostAddress>& addresses, std::uint16_t port,
                                  std::chrono::milliseconds timeOut);

  void stop() { stopped_ = true; }

 private:
  void begin(std::chrono::milliseconds timeOut);
  std::unique_ptr<QSslSocket> runTo(const std::vector<QHostAddress>& addresses, std::uint16_t port);
  std::vector<QHostAddress> lookUp(const std::string& host);
  void enter(const QHostAddress& address, std::uint16_t port);
  std::unique_ptr<QSslSocket> takeWinner();
  bool allFailed() const;
  [[noreturn]] void fail() const;
  std::chrono::milliseconds left() const;
  void wait(std::chrono::milliseconds longest);

  Waiting& waiting_;
  std::vector<std::unique_ptr<QSslSocket>> runners_;
  std::chrono::steady_clock::time_point deadline_;
  bool stopped_ = false;
};

}  // namespace velmora
