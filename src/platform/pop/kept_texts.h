#pragma once

#include <cstddef>

#include "platform/mail_reader.h"

namespace velmora::pop {

/// Cuts the texts of a message to what there is still room for, in bytes, and takes them off it. Without any room a
/// message keeps less than a thousand bytes, enough to be told from others.
void keepWithin(std::size_t& room, ReadMail& mail);

}  // namespace velmora::pop
