#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/mime/entity.h"

namespace velmora::mime {

/// A part that holds text. Views into the message.
struct TextPart {
  std::string_view Content;
  std::string_view Encoding;  ///< value of Content-Transfer-Encoding
  std::string Charset;
};

/// What a message is made of, in order: `mail_bounds::parts` at most. Multiparts are opened, attached messages not. A
/// multipart that holds no parts after all, or lies deeper than any real one, or behind too many parts, is plain text.
struct Parts {
  std::vector<TextPart> Plain;
  std::vector<TextPart> Html;
  std::vector<TextPart> OtherText;
  std::vector<std::string> NonTextIds;  ///< Content-ID of each part that is no text and isn't marked as attached
  std::size_t Attached = 0;             ///< parts marked as attached
};

Parts partsOf(Reading& reading, const Entity& message);

}  // namespace velmora::mime
