#pragma once

#include <cstdint>
#include <exception>

#include "checking/pop_session.h"
#include "platform/failure.h"

namespace velmora {

/// What has just failed is a connection, for the server's certificate, and the user himself is asked whether it is to
/// be accepted: nobody needs to tell him once more.
bool IsUserAskedAboutCertificate(const Program& program, const std::exception& failure);

/// Asks him. Returns whether he accepts it; that is kept with the account.
bool AcceptCertificate(Program& program, std::int16_t account);

/// Does something that connects, and once more where a certificate was refused that the user then accepts.
template <class Action>
auto WithAcceptedCertificate(Program& program, std::int16_t account, Action action) {
  try {
    return action();
  } catch (const PopFailure& failure) {
    if (!IsUserAskedAboutCertificate(program, failure)) throw;
    CloseConnection(program);
    if (!AcceptCertificate(program, account)) throw;
  }
  return action();
}

}  // namespace velmora
