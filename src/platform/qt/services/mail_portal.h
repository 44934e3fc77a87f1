#pragma once

#include <QObject>
#include <QVariantMap>
#include <functional>

#include "platform/mail_draft.h"

class QDBusPendingCallWatcher;

namespace velmora {

/// One call of the desktop's portal for mail (org.freedesktop.portal.Email), which has the user's mail program show a
/// draft. Its answer comes as a signal of a request, out of the event loop.
class MailPortal : public QObject {
  Q_OBJECT

 public:
  using Answered = std::function<void(PortalAnswer)>;

  /// Returns at once. `answered` is called once, later or, where no portal can be asked, before.
  static void compose(const MailDraft& draft, Answered answered);

 private:
  explicit MailPortal(Answered answered) : answered_(std::move(answered)) {}

  void ask(const MailDraft& draft);
  void listen(const QString& request);
  void begun(const QDBusPendingCallWatcher& call);
  void end(PortalAnswer answer);

  Q_SLOT void respond(uint response, const QVariantMap& results);

  Answered answered_;
  QString request_;  ///< the path of the request that is listened to
};

}  // namespace velmora
