#pragma once

#include <optional>
#include <string>

#include "platform/date_time.h"

namespace velmora::mime {

/// The moment that the text of a Date header names, in local time; nothing where it is none or lies outside of the
/// years 1970 to 9999.
std::optional<DateTime> parseDate(const std::string& text);

}  // namespace velmora::mime
