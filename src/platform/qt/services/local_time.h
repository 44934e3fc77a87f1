#pragma once

#include "platform/date_time.h"

namespace velmora {

/// What the clock on the user's wall shows.
DateTime localTime();

}  // namespace velmora
