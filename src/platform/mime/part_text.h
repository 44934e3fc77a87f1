#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/mime/parts.h"

namespace velmora::mime {

/// The charset of a text: what its first bytes tell, what its Content-Type says, or for HTML without one what the HTML
/// itself says. Blank where none does.
std::string charsetOf(const Part& part);

/// Gives the text of a part in slices of whole characters, until `take` returns false.
void decodeText(Reading& reading, const Part& part, const std::function<bool(std::string_view)>& take);

/// The HTML of a part, or its beginning: pictures stand in some HTML themselves.
struct HtmlText {
  std::string Html;  ///< 8 MiB of it at most
  bool IsWhole = true;
};

HtmlText decodeHtml(Reading& reading, const Part& part);

}  // namespace velmora::mime
