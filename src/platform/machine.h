#pragma once

namespace velmora {

/// Whether the machine has a network, as the system's own services tell it. Unknown where none of them is there.
enum class Connectivity { Unknown, Offline, Online };

}  // namespace velmora
