#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/mime/converters.h"
#include "platform/mime/seven_bit.h"

namespace velmora::mime {

/// Turns the bytes of one text into valid UTF-8, slice by slice, even where they break their charset. An unknown or
/// blank charset is taken as UTF-8, and each byte that is none as Windows-1252.
class CharsetDecoder {
 public:
  /// `converters` outlives it, and no other text is decoded meanwhile.
  CharsetDecoder(Converters& converters, std::string_view charset);

  /// The text of the next bytes. What is cut in the middle of a character waits for the next call.
  std::string decode(std::string_view bytes);

  /// The text of what still waits.
  std::string finish();

 private:
  std::string convert(std::string_view bytes);

  Converter* converter_ = nullptr;    ///< none for UTF-8
  std::optional<SevenBit> sevenBit_;  ///< in front of the converter, where the system has no such charset
  std::string waiting_;               ///< less than a character
  std::size_t faults_ = 0;
};

/// The same for a text that is there as a whole.
std::string toUtf8(Converters& converters, std::string_view bytes, std::string_view charset);

}  // namespace velmora::mime
