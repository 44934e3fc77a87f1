#pragma once

#include <cstdint>

namespace velmora {

struct Program;

/// Brings an account's messages over from the POP client, which is connected, into the message store, and counts what
/// is new. Leaves the server before it reads any message. Fails in a dialog, never to its caller.
void ProcessMessages(Program& program, std::int16_t account);

}  // namespace velmora
