#include "platform/qt/services/mail_portal.h"

#ifdef Q_OS_UNIX
#endif

#include <utility>

namespace velmora {

void composeThroughMailPortal(const MailDraft& /*draft*/, std::function<void(PortalAnswer)> answered) {
  answered(PortalAnswer::NotThere);
}

}  // namespace velmora
