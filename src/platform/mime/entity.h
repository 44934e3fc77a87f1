#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/mime/reading.h"

namespace velmora::mime {

/// A message or a part of one. Views into the bytes that were split.
struct Entity {
  std::string_view Header;   ///< without the blank line that ends it and without the last line's end
  std::string_view Content;  ///< what follows the blank line
};

/// One header field. A line that is neither a field nor a continuation belongs to the field before it.
struct Field {
  std::string_view Name;
  std::string_view Value;  ///< still folded
};

/// A header ends at its first blank line, and before the field that would be one more than `mail_bounds::fields`. Where
/// the blank line is missing, it ends before the first line that is no part of a header and isn't followed by a field
/// either.
Entity splitEntity(Reading& reading, std::string_view bytes);

/// As many as `splitEntity` leaves in a header.
std::vector<Field> fieldsOf(Reading& reading, std::string_view header);

/// The first field of this name in any case, blank where there is none.
std::string_view valueOf(const std::vector<Field>& fields, std::string_view name);

/// At most `maxBytes` of the value in one line, without NUL.
std::string unfold(std::string_view value, std::size_t maxBytes);

/// The first field of this name as one line, of more bytes than any real value that has parameters.
std::string lineOf(const std::vector<Field>& fields, std::string_view name);

/// The parts between the delimiter lines of a multipart, without preamble and epilogue; the last one reaches to the end
/// where the closing delimiter is missing, and where it is the one that makes up `maxParts`. None where no delimiter is
/// found.
std::vector<std::string_view> splitMultipart(Reading& reading, std::string_view content, std::string_view boundary,
                                             std::size_t maxParts);

}  // namespace velmora::mime
