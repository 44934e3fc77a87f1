#pragma once

#include <string>
#include <string_view>

#include "platform/mime/reading.h"

namespace velmora::mime {

/// The text that a reader of the HTML (valid UTF-8) sees, in lines that end with LF and with at most one blank line
/// between them: lists with their marks, tables row by row with tabs between the cells, the address behind a link
/// where its words don't tell it, pictures by their alternative text. Nothing is loaded, and no HTML of 1 MiB takes
/// longer than half a second.
std::string htmlToText(Reading& reading, std::string_view html);

}  // namespace velmora::mime
