#pragma once

#include <string>
#include <string_view>

namespace velmora::mime {

/// The address of the last mailbox of a list, of which encoded words are taken away. Blank where it isn't sure which
/// one that is, and where it is no plain "local@domain" of 320 bytes at most: letters and digits of any script, and in
/// the local part the signs that a dot-atom may hold (RFC 5322 section 3.2.3).
std::string lastBareAddress(std::string_view list);

}  // namespace velmora::mime
