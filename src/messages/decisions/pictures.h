#pragma once

#include <string>
#include <string_view>

#include "accounts/decisions/accounts.h"
#include "messages/decisions/message_store.h"

namespace velmora {

/// The key of a row's picture in imlListViewIcons.
std::string_view rowPicture(const MailMessage& message);

/// What the picture of a marked message means, and which rule has marked it; blank of one that isn't.
std::string markText(const MailMessage& message);

/// The key of an account's picture on its tabs, in imlTabIcons.
std::string tabPicture(const Accounts::Row& account);

/// The tab picture of an animation frame from 1 to 8, which turns backwards: frame 1 is "MailSpin8".
std::string spinPicture(int frame);

}  // namespace velmora
