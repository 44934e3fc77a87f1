#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/failure.h"
#include "platform/mail_reader.h"
#include "platform/pop/session.h"

namespace velmora::pop {

/// What the server lists of one message.
struct Entry {
  std::int32_t number = 0;  ///< holds for this login only
  std::int64_t bytes = 0;   ///< as announced, at most 2^31 - 1; 0 where the server doesn't tell
  std::string uid;          ///< blank where the server has none
};

using Listing = std::vector<Entry>;

/// What `list` sends, in that order.
std::vector<std::string> listCommands();

/// LIST and UIDL (RFC 1939 sections 5 and 7). Gives as many entries as the mailbox has messages. Throws PopFailure with
/// messageRefused where the server refuses for the moment.
Listing list(const Channel& channel);

/// Gives an identifier, made from the header's bytes, to each entry that has none. A message without any header stays
/// without one.
void completeIdentifiers(const Channel& channel, Listing& listing, const MailReader& reader);

/// An identifier made from the header of a message, or of what TOP gives of it, up to mail_bounds::raw bytes; blank
/// where there is no header, since it would be that of all messages without one. No server gives one like it.
std::string identifierFromHeader(std::string_view message, const MailReader& reader);

/// The failure of a server that refused message `position` (from 1) of `count`.
PopFailure refusedMessage(const Conversation& conversation, std::size_t position, std::size_t count,
                          std::string_view words);

}  // namespace velmora::pop
