#pragma once

#include <string_view>

namespace velmora {

/// The first line of a text with its end, or as much of it as one paragraph holds without slowing the layout down,
/// broken behind a blank where one is near. Not empty where the text isn't.
std::string_view firstLine(std::string_view text);

/// Whether what `firstLine` gave is all of the line.
bool isEnded(std::string_view line);

}  // namespace velmora
