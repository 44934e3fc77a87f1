#pragma once

#include <memory>

#include "platform/pop/transport.h"

namespace velmora {

/// Connections of the desktop's own network library. Each wait turns the program's event loop.
std::unique_ptr<pop::Transport> makeQtTransport();

}  // namespace velmora
