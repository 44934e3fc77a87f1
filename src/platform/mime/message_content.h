#pragma once

#include <cstdint>
#include <string>

#include "platform/mime/entity.h"

namespace velmora::mime {

struct MessageContent {
  std::string Body;  ///< valid UTF-8, line ends CR LF, within `mail_bounds::message`
  std::int16_t Attachments = 0;
};

/// The body is the plain text of all parts that aren't attached. Without any it is the text of the first HTML part, and
/// without that of any other text. Of HTML the first 8 MiB are read. Attached are the parts that say so, and those that
/// are no text unless the HTML shows them. Attached messages aren't looked into.
MessageContent readContent(Reading& reading, const Entity& message);

}  // namespace velmora::mime
