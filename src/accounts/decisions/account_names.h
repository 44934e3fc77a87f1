#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "accounts/decisions/accounts.h"

namespace velmora {

/// A name for one account more that none has yet.
std::string newAccountName(const Accounts& accounts);

/// Another account has the name that the working copy gives this one; case makes no difference.
bool isNameTaken(Accounts& accounts, std::int16_t number);

/// What a check has put behind an account's name in a text that begins with it.
std::string behindName(std::string_view text, std::string_view name);

}  // namespace velmora
