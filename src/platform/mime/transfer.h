#pragma once

#include <string>
#include <string_view>

namespace velmora::mime {

/// Undoes a transfer encoding (base64, quoted-printable, uuencode in any of their names; all else is taken as it is).
/// What breaks the encoding is passed over.
std::string decodeTransfer(std::string_view content, std::string_view encoding);

}  // namespace velmora::mime
