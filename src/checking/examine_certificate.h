#pragma once

#include <cstdint>

#include "checking/pop_session.h"
#include "platform/failure.h"

namespace velmora {

/// The connection has just failed for the server's certificate, and the user is asked himself whether it is to be
/// accepted: nobody needs to tell him once more.
bool IsUserAskedAboutCertificate(const Program& program);

/// Asks him. Returns whether he accepts it; that is kept with the account.
bool AcceptCertificate(Program& program, std::int16_t account);

/// Does something that connects, and once more where a certificate was refused that the user then accepts.
template <class Action>
auto WithAcceptedCertificate(Program& program, std::int16_t account, Action action) {
  try {
    return action();
  } catch (const PopFailure&) {
    if (!IsUserAskedAboutCertificate(program)) throw;
    CloseConnection(program);
    if (!AcceptCertificate(program, account)) throw;
  }
  return action();
}

}  // namespace velmora
