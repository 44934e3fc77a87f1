#pragma once

#include <functional>

namespace velmora {

/// Where the program crashes, what it holds in memory stays out of any file: passwords and mail are in there.
void forbidCoreDumps();

/// Does it with the limit on dumps that the program itself was started with: other programs that it starts take theirs
/// from it. Returns what it returns.
bool withFormerDumpLimit(const std::function<bool()>& start);

}  // namespace velmora
