#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora::mime {

/// Valid UTF-8 from any bytes: what is UTF-8 stays, every other byte is taken as Windows-1252.
std::string toUtf8(std::string_view bytes);

/// The beginning of valid UTF-8 that fits `maxBytes` and cuts no character.
std::string_view cut(std::string_view utf8, std::size_t maxBytes);

/// One line of at most `maxBytes`: line breaks and control characters become one blank, none remain at the ends. The
/// control characters U+0080 to U+009F, which real mail never means, become what Windows-1252 has in their place.
std::string oneLine(std::string_view utf8, std::size_t maxBytes);

/// Text of at most `maxBytes` in lines that end with CR LF, without control characters but the tab.
std::string linesOf(std::string_view utf8, std::size_t maxBytes);

}  // namespace velmora::mime
