#pragma once

namespace velmora {

/// Has the processor fetch memory that is soon to be read, and goes on meanwhile. Any address will do.
inline void prefetch(const void* address) { __builtin_prefetch(address); }

}  // namespace velmora
