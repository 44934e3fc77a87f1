#pragma once

#include <string>
#include <string_view>

namespace velmora::mime {

/// What a Content-Type field says (RFC 2045 section 5.1) of its content.
struct ContentType {
  std::string Type;
  std::string Subtype;
  std::string Charset;   ///< blank where it isn't told
  std::string Boundary;  ///< blank where there is none

  bool is(std::string_view type) const;
  bool is(std::string_view type, std::string_view subtype) const;
};

/// Reads an unfolded value, however it breaks the rules; `fallback` has the type where it names none. Of other
/// parameters nothing is read: a library that decodes them all opens a charset for each.
ContentType parseContentType(std::string_view value, const ContentType& fallback);

}  // namespace velmora::mime
