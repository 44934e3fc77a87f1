#pragma once

#include <cstdint>
#include <exception>

#include "checking/pop_session.h"
#include "platform/failure.h"

namespace velmora {

/// What has just failed is a connection, for the server's certificate, and the user himself is asked whether it is to
/// be accepted: nobody needs to tell him once more.
bool IsUserAskedAboutCertificate(const Program& program, const std::exception& failure);

/// Asks him, unless he has asked for a stop. Where he accepts it, that is kept with the account. Returns whether to
/// connect once more.
bool AcceptCertificate(Program& program, std::int16_t account);

/// Does something that connects, and once more each time that a certificate was refused which the user then accepts.
template <class Action>
auto WithAcceptedCertificate(Program& program, std::int16_t account, Action action) {
  while (true) {
    try {
      return action();
    } catch (const PopFailure& failure) {
      if (!IsUserAskedAboutCertificate(program, failure)) throw;
      CloseConnection(program);
      if (!AcceptCertificate(program, account)) throw;
    }
  }
}

}  // namespace velmora
