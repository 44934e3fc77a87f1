#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/mime/entity.h"

namespace velmora::mime {

/// What a part is to its message.
enum class Role {
  Sequence,      ///< holds parts that stand side by side
  Alternatives,  ///< holds parts that say the same, the plainest first
  Plain,         ///< text of the message
  Html,          ///< the same
  Picture,       ///< a picture, font or style that HTML may show; attached where none does
  Attached,
  LeftOut,  ///< another form of the text
};

/// A part of a message. Views into the message.
struct Part {
  Role Is = Role::LeftOut;
  std::size_t End = 0;    ///< the place behind the last part that it holds
  std::string Kind = {};  ///< "image/png", in small letters
  std::string_view Header = {};
  std::string_view Content = {};
  std::string_view Encoding = {};  ///< value of Content-Transfer-Encoding
  std::string Charset = {};
  std::string Id = {};  ///< Content-ID of a picture
};

/// A message and all that it is made of, in order and each in front of what it holds: `mail_bounds::parts` at most and
/// the message itself. Multiparts are opened, attached messages not. A multipart that holds no parts after all, or lies
/// deeper than any real one, or behind too many parts, is plain text.
///
/// The text is what is plain or HTML, and any other text only where there is neither: besides it that is attached, but
/// for forms that only stand for another part. Attached is also what says so, and plain text or HTML with a file name
/// that isn't the first text of the message with anything in it. In a multipart/related the root alone is text.
using Parts = std::vector<Part>;

/// `fields` are those of its header.
Parts partsOf(Reading& reading, const Entity& message, const std::vector<Field>& fields);

}  // namespace velmora::mime
