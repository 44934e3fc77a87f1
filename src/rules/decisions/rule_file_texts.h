#pragma once

#include <string_view>

#include "platform/platform.h"

namespace velmora {}  // namespace velmora
