#pragma once

#include <string>
#include <string_view>

namespace velmora::mime {

/// Valid UTF-8 from bytes of the charset, even where they break it. An unknown or blank charset is taken as UTF-8,
/// and each byte that is none as Windows-1252.
std::string toUtf8(std::string_view bytes, std::string_view charset);

}  // namespace velmora::mime
