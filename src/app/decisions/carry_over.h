#pragma once

#include "app/decisions/move_file.h"

namespace velmora {

/// The same login of the same server, reached in the same way: what one account may send there, so may the other.
bool isSameMailbox(const Account& a, const Account& b);

/// What accounts of a file take over from those that are here. An account that comes without a password keeps that of
/// the same mailbox here, and each keeps the certificate that was accepted for its server. An entry of the keyring is
/// one account's: that of the same name before any other.
void carryOver(const MovedSettings& here, MovedSettings& there);

}  // namespace velmora
