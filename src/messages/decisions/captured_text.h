#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/date_time.h"

namespace velmora {

/// A byte size as whole kilobytes of 1000 bytes, rounded half to even, in decimal digits.
std::string sizeText(std::int32_t bytes);

/// A sender as the list shows it: "&" becomes "and", double quotation marks go.
std::string cleanFrom(std::string_view from);

/// Recipients as the list shows them: without double quotation marks; "Undisclosed-Recipient" where nothing is left.
std::string cleanTo(std::string_view to);

/// A general date, with or without a weekday of three letters before it ("Sun, "), as the list shows it: "Nov 15, 2026
/// 04:22:05 PM". Only its first 20 characters count, so that a long one loses its marker and reads as a morning time;
/// this is how dates have always been shown. A text that is no date stays as it is.
std::string displayDate(std::string_view generalDate, const DateNames& months);

/// For each identifier, whether it is new: not among those of the previous pass. `previous` holds the rows that count.
std::vector<bool> newFlags(const std::vector<std::string_view>& present, const std::vector<std::string_view>& previous);

}  // namespace velmora
