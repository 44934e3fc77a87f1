#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"
#include "platform/printing.h"

namespace velmora {

/// What the user is told while a job goes on.
std::string printProgress(const PrintState& state);

/// What is said of a job's trouble, which is some.
Question printFailure(std::string_view appTitle, const PrintState& state);

/// Whether to quit while a message is being printed.
Question quitWhilePrinting(std::string_view appTitle);

}  // namespace velmora
