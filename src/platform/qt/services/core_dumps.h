#pragma once

namespace velmora {

/// Where the program crashes, what it holds in memory stays out of any file: passwords and mail are in there.
void forbidCoreDumps();

}  // namespace velmora
