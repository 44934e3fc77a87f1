#pragma once

#include <optional>
#include <string_view>

#include "platform/mime/date_pieces.h"

namespace velmora::mime {

/// Takes a sign and the digits behind it ("+0200", "+02:00", "+2") and returns how many minutes that is ahead of UTC;
/// nothing where no zone is.
std::optional<int> takeOffset(Pieces& pieces);

/// The zone that a comment names: by nothing but a name in capitals ("EST"), or an offset ("GMT+02:00").
std::optional<int> zoneInComment(std::string_view comment);

}  // namespace velmora::mime
