#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/certificate.h"

namespace velmora::pop {

using Milliseconds = std::chrono::milliseconds;

/// One connection to a server, blocking for its caller while the program's event loop keeps turning: timers tick and
/// buttons work inside `connect` and `receive`. A handler that runs there may call `abort`.
class Transport {
 public:
  virtual ~Transport() = default;

  /// Opens the connection within `timeOut`, with TLS from the first byte where `secure`. Throws PopFailure with
  /// hostNotFound, connectionRefused, timedOut, connectionReset or tlsHandshakeFailed. May be called again after
  /// `abort` or after the server ended the connection.
  virtual void connect(const std::string& host, std::uint16_t port, bool secure, Milliseconds timeOut) = 0;

  /// The certificate that the server showed, if it did, and what is wrong with it by what the system trusts and the
  /// name of the host, if anything. No certificate is ever refused here.
  virtual ServerCertificate certificate() const = 0;

  /// Queues bytes for sending and returns at once. Ignored where the connection is gone.
  virtual void send(std::string_view bytes) = 0;

  /// Waits at most `wait` for bytes and returns all that are there, at least one, or none when time ran out or the
  /// connection is gone; `isOpen` tells which. Bytes that came before the close are handed out first.
  virtual std::string receive(Milliseconds wait) = 0;

  /// Lets the event loop turn once without waiting, for a caller that is at work for long. False where the program is
  /// ending: then nothing may go on. As inside `receive`, a handler may call `abort`.
  virtual bool turn() = 0;

  /// The connection stands, or bytes that came before its end are still to be received.
  virtual bool isOpen() const = 0;

  /// Ends the connection at once, without ceremony. Safe at any time, also inside `connect` and `receive`, which then
  /// return (`connect` with a failure).
  virtual void abort() = 0;

  /// Time that passes evenly, from any start.
  virtual Milliseconds now() const = 0;
};

}  // namespace velmora::pop
