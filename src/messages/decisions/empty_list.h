#pragma once

#include <string>

#include "accounts/decisions/accounts.h"

namespace velmora {

/// What the list says in place of messages where an account has none to show.
std::string emptyListText(const Accounts::Row& account);

}  // namespace velmora
