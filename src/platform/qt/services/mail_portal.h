#pragma once

#include <functional>

#include "platform/mail_draft.h"

namespace velmora {

/// Hands a draft to the desktop's portal for mail (org.freedesktop.portal.Email), which has the user's mail program
/// show it. Returns at once; the answer comes out of the event loop.
void composeThroughMailPortal(const MailDraft& draft, std::function<void(PortalAnswer)> answered);

}  // namespace velmora
