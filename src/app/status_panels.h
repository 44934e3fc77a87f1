#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "accounts/accounts.h"
#include "platform/date_time.h"

namespace velmora {

/// Rows of the message list that show an attachment, by kind of picture.
struct AttachmentCounts {
  std::int16_t ListAttachCount = 0;
  std::int16_t ListDeleteAttachCount = 0;
  std::int16_t ListNewAttachCount = 0;
};

/// The second status panel: the most pressing count of an account, and the picture that tells what it counts.
struct CountPanel {
  std::string text;
  std::string_view picture;  ///< key in imlListViewIcons, blank for none
};
CountPanel countPanel(const Accounts::Row& account, const AttachmentCounts& list);

/// "Nov 15/26 4:21 PM"
std::string clockText(const DateTime& now, const MonthNames& months);

}  // namespace velmora
