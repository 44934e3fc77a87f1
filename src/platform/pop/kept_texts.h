#pragma once

#include <cstddef>

#include "platform/mail_reader.h"

namespace velmora::pop {

/// Cuts the texts of a message to what there is still room for, in bytes, and takes them off it. Where there is none
/// for what is told of its attachments, only their number stays. Without any room a message keeps little more than a
/// thousand bytes, enough to be told from others and answered.
void keepWithin(std::size_t& room, ReadMail& mail);

}  // namespace velmora::pop
