#pragma once

#include <string>
#include <string_view>

namespace velmora::mime {

/// The charset that a meta element at the beginning of HTML names, blank where none does, and where the bytes are
/// UTF-8: gateways turn HTML into that and leave its meta element as it was. One of 16 or 32 bits is taken for UTF-8,
/// since it could not have been read by its bytes (HTML standard, "prescan a byte stream").
std::string charsetInHtml(std::string_view bytes);

}  // namespace velmora::mime
