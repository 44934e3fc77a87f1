#pragma once

#include <cstddef>
#include <string>

#include "platform/mail_draft.h"

namespace velmora {

/// Bytes of the longest address that is handed to a mail program: one argument of a program may be longer on some
/// systems, but all arguments together not on all.
inline constexpr std::size_t longestMailto = 30'000;

/// Of a subject, which real ones never reach.
inline constexpr std::size_t longestSubject = 1000;

/// The draft, cut so that its address isn't longer than may be. The body ends with a line that says so, where it is
/// cut.
MailDraft handedOn(MailDraft draft);

/// The draft as an address (RFC 6068), "mailto:" alone for a blank one. All that could end one of its texts, or begin
/// another field, is percent-encoded, so that what stands in them stays there.
std::string mailtoAddress(const MailDraft& draft);

}  // namespace velmora
