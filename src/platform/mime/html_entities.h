#pragma once

#include <string>
#include <string_view>

namespace velmora::mime {

/// Where a text stands: an address in an attribute may hold "&copy=" and mean it.
enum class HtmlPlace { Content, Attribute };

/// The text with its character references (HTML standard, section "Named character references" and before) put in
/// place. What is none stays as it is.
std::string decodeEntities(std::string_view html, HtmlPlace place);

}  // namespace velmora::mime
