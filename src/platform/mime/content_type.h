#pragma once

#include <string>
#include <string_view>

#include "platform/mime/parameters.h"

namespace velmora::mime {

/// What a Content-Type field says (RFC 2045 section 5.1) of its content.
struct ContentType {
  std::string Type;
  std::string Subtype;
  std::string Charset = {};   ///< blank where it isn't told
  std::string Boundary = {};  ///< blank where there is none
  std::string Start = {};     ///< which part of a multipart/related shows the others (RFC 2387); blank for the first
  ParameterText Name = {};

  bool is(std::string_view type) const;
  bool is(std::string_view type, std::string_view subtype) const;
};

/// Reads an unfolded value, however it breaks the rules; `fallback` has the type where it names none. Of other
/// parameters nothing is read: a library that decodes them all opens a charset for each.
ContentType parseContentType(std::string_view value, const ContentType& fallback);

/// "image/png", in small letters; "application/octet-stream" where it is no name of a type, or too long a one.
std::string kindOf(const ContentType& type);

/// What a Content-Disposition field says (RFC 2183).
struct Disposition {
  bool IsAttached = false;
  ParameterText FileName;
};

Disposition parseDisposition(std::string_view value);

}  // namespace velmora::mime
