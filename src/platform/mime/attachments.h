#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/mail_reader.h"
#include "platform/mime/parts.h"

namespace velmora::mime {

/// The parts that are attached, in order: those that are none of the text, but for those that HTML of the message
/// shows.
std::vector<const Part*> attachmentsOf(Reading& reading, const Parts& parts);

/// What is told of such a part. The name, of 255 bytes at most, is the file name, else the name of the content.
Attachment describe(Reading& reading, const Part& part);

/// The content of any part, with its transfer encoding undone.
std::string contentOf(Reading& reading, const Part& part);

}  // namespace velmora::mime
