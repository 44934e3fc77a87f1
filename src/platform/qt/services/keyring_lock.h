#pragma once

namespace velmora {

/// The keyring of a desktop that has it on the session's bus is there, and locked. Only looks: nothing is started, and
/// nobody asked.
bool isKeyringLocked();

}  // namespace velmora
