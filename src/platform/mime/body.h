#pragma once

#include <string>

#include "platform/mime/parts.h"

namespace velmora::mime {

/// The text of a message: valid UTF-8, line ends CR LF, within `mail_bounds::message`. Of alternatives it is the first
/// that is plain and not blank, else the last that has text; what stands side by side is joined, but for what is blank.
/// HTML is turned to text, and of each the first 8 MiB are read.
std::string bodyOf(Reading& reading, const Parts& parts);

}  // namespace velmora::mime
