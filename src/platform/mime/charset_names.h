#pragma once

#include <string>
#include <string_view>

namespace velmora::mime {

/// The name by which the system knows the charset that mail names so, or a name of `seven_bit.h`; blank for UTF-8,
/// ASCII and where none is named. What the system takes more literally than mail programs, it is told by the name of
/// what they mean: for decades they have written what a vendor added to a charset under the name of that charset.
std::string systemCharset(std::string_view named);

}  // namespace velmora::mime
