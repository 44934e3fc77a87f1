#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/mime/reading.h"

namespace velmora::mime {

/// A stretch of a header value.
struct Run {
  std::string Text;      ///< valid UTF-8
  bool Encoded = false;  ///< it stood in encoded words
};

/// The stretches of an unfolded header value with its encoded words decoded. Words side by side are put together before
/// their charset is read, so that a character cut by them is whole again. 8-bit text is taken as UTF-8, else
/// in the charset of the message's text, else as Windows-1252.
std::vector<Run> decodedRuns(Reading& reading, std::string_view value);

std::string decodedText(Reading& reading, std::string_view value);

}  // namespace velmora::mime
