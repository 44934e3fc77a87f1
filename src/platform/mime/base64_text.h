#pragma once

#include <string_view>

namespace velmora::mime {

/// Whether a content that is said to be base64 has its form, as far as its beginning shows.
bool hasFormOfBase64(std::string_view content);

/// Whether a text in this charset that is said to be base64 is: its beginning has the letters of base64 alone, as many
/// as make up whole bytes, and these look like text.
bool isBase64Text(std::string_view content, std::string_view charset);

}  // namespace velmora::mime
