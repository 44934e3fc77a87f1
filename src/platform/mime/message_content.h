#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/mime/entity.h"

namespace velmora::mime {

using HtmlToText = std::function<std::string(std::string_view html)>;

struct MessageContent {
  std::string Body;  ///< valid UTF-8, line ends CR LF
  std::int16_t Attachments = 0;
};

/// The body is the plain text of all parts that aren't attached. Without any it is the text of the first HTML part, and
/// without that of any other text. Attached are the parts that say so, and those that are no text unless the HTML shows
/// them. Attached messages aren't looked into.
MessageContent readContent(const Entity& message, const HtmlToText& htmlToText);

}  // namespace velmora::mime
