#pragma once

#include <functional>

namespace velmora::test {

/// Runs `work` in a copy of this process, which is killed when it is about to change anything on the disk for the
/// `call`th time: to make, fill, cut, rename or remove a file. Returns whether it got through before.
bool survives(int call, const std::function<void()>& work);

}  // namespace velmora::test
