#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// Bytes of the longest name under which a file is written: 255 would leave no room for the draft beside it.
inline constexpr std::size_t longestFileName = 240;

/// The endings in a filter such as "Message (*.eml)|*.eml|Text (*.txt)|*.txt|", with their dots: ".eml", ".txt".
std::vector<std::string> fileEndings(std::string_view filter);

/// What follows the last backslash or slash of a path.
std::string fileNamePart(std::string_view path);

/// The name under which a file is saved that was given this name, which may be a stranger's: one that ends, in capitals
/// or not, in one of these endings, or else in the first of them. It is neither that of a hidden file nor what a
/// command takes for an option, has no blank or dot in front of its ending, and is no longer than it may be. Nothing
/// where nothing is left of it. Applied once more, it changes nothing.
std::string savedName(std::string_view name, std::span<const std::string> endings);

}  // namespace velmora
