#pragma once

#include <optional>
#include <string_view>

#include "platform/date_time.h"

namespace velmora::mime {

enum class TimeOfDay { Optional, Needed };

/// The moment that the text of a Date header names, in local time; nothing where it is none, or lies outside of the
/// years 1970 to 9999. Read are the forms of RFC 5322, the obsolete ones too, ISO 8601, and what programs write in
/// their place: the parts in any order, the time with dots, with AM and PM or, where it is optional, not at all. A time
/// that isn't understood makes no date. The weekday isn't asked, since it is more often wrong than the date is; a time
/// without a zone that is known is UTC.
///
/// Of dates in numbers alone "5/6/2019" has the month first, as the programs have it that write slashes, and "5.6.2019"
/// and "5-6-2019" have the day first, unless only the other order makes a date; with a year of two digits they have to
/// be a date in one order alone. The local zone is that of the last `tzset`.
std::optional<DateTime> parseDate(std::string_view text, TimeOfDay time = TimeOfDay::Optional);

}  // namespace velmora::mime
