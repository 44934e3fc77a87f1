#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "accounts/decisions/accounts.h"
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
std::string clockText(const DateTime& now, const DateNames& months);

// What the tips of the panels say, each built from the text that its panel shows.

/// Panel 2: what its number counts.
std::string countTip(const Accounts::Row& account, const AttachmentCounts& list, const std::string& text);

/// Panel 3: the moment of the last check. The panel knows its time only, so the day is always today's.
std::string lastCheckTip(const std::string& text, const DateTime& now, const DateNames& months);

/// Panel 4: the moment of the next check, which `nextCheckTime` holds as "15/11/26-16:21".
std::string nextCheckTip(const std::string& text, std::string nextCheckTime, const DateNames& months);

/// Panel 5: the present moment.
std::string clockTip(const DateTime& now, const DateNames& months);

}  // namespace velmora
