#pragma once

#include <string>
#include <string_view>

#include "platform/mime/reading.h"

namespace velmora::mime {

/// The text of a header value that may hold 8-bit bytes: UTF-8 if most of them are, else in the charset of the
/// message's text, if they are all there in it and every byte of ASCII stays what and where it is, else UTF-8 with
/// Windows-1252.
std::string rawText(Reading& reading, std::string_view value);

}  // namespace velmora::mime
