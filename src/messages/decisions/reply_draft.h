#pragma once

#include "messages/decisions/message_store.h"
#include "platform/date_time.h"
#include "platform/mail_draft.h"

namespace velmora {

/// An answer to a message's sender that quotes it, to be written on in a mail program.
MailDraft replyDraft(const MailMessage& message, const DateNames& names);

}  // namespace velmora
