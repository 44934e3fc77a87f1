#pragma once

#include <string>
#include <string_view>

namespace velmora {

class Platform;

/// Whether there is a plain file at `path` whose name has this ending, in capitals or not: what makes an email client
/// or a sound usable.
bool isUsableFile(const Platform& platform, const std::string& path, std::string_view ending);

}  // namespace velmora
