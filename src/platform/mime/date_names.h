#pragma once

#include <optional>
#include <string_view>

namespace velmora::mime {

/// The month, 1 to 12, whose English name is this in any case, or begins so with three letters at least.
std::optional<int> monthNamed(std::string_view word);

/// How many minutes the time zone of this name is ahead of UTC. Of single letters "Z" is one; programs disagree on the
/// sign of all others (RFC 5322 section 4.3).
std::optional<int> zoneNamed(std::string_view word);

}  // namespace velmora::mime
