#pragma once

#include <string>
#include <string_view>

#include "platform/mime/reading.h"

namespace velmora::mime {

/// The addresses of an unfolded header value as people read them: "Name <address>", joined by ", ". What has another
/// form stays as it is, decoded: nothing that a sender says of himself vanishes but quotation marks and brackets.
std::string displayAddresses(Reading& reading, std::string_view value);

/// The bare address of the last mailbox of such a value, to answer to. Blank where it isn't plain and sure, and where
/// encoded words make up a part of it.
std::string senderAddress(Reading& reading, std::string_view value);

}  // namespace velmora::mime
