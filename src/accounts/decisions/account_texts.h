#pragma once

#include <string>
#include <string_view>

#include "accounts/decisions/accounts.h"
#include "platform/platform.h"

namespace velmora {

/// What the text boxes say in place of a path that doesn't count.
inline constexpr std::string_view usingDefaultClient = "Using Default Email Client";
inline constexpr std::string_view usingDefaultSound = "Using Default Sound File";

/// A text that the client takes for a port.
bool isPort(std::string_view text);
inline constexpr const char* badPort = "Port: must be a number from 1 to 65535.";

/// What of an account's connection is protected, and what isn't, with servers refused or not whose certificate can't be
/// trusted.
std::string protectionText(const Account& account, bool refuseUntrusted);

/// The two reasons for which an account can't be saved.
Question blankName();
Question duplicateName(std::string_view name);

/// What is to become of a changed account that the user is about to leave.
Question changesNotSaved(std::string_view tabCaption);

/// Whether an account may be deleted.
Question deleteWarning(std::string_view name);

}  // namespace velmora
