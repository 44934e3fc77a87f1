#include "platform/qt/services/mail_portal.h"

#include <utility>

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QUuid>

#include "platform/qt/strings.h"
#endif

namespace velmora {

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)

namespace {

constexpr const char* portal = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* mailInterface = "org.freedesktop.portal.Email";
// For the portal's first word, in milliseconds; the user may take longer. One that has to be started first needs time.
constexpr int patience = 5000;
constexpr int patienceForStart = 25'000;
constexpr const char* requestInterface = "org.freedesktop.portal.Request";

/// The portal passes the texts on as they are. None of its options lets one of them name a file or another address.
QVariantMap optionsFor(const MailDraft& draft, const QString& token) {
  QVariantMap options{{"handle_token", token}};
  if (!draft.to.empty()) options["address"] = qt(draft.to);
  if (!draft.subject.empty()) options["subject"] = qt(draft.subject);
  if (!draft.body.empty()) options["body"] = qt(draft.body);
  return options;
}

}  // namespace

// NOLINTBEGIN(cppcoreguidelines-owning-memory): a request deletes itself once it has been answered

void MailPortal::compose(const MailDraft& draft, Answered answered) {
  (new MailPortal(std::move(answered)))->ask(draft);
}

/// Where the request will stand is known beforehand, so that no answer can come before it is listened to.
void MailPortal::ask(const MailDraft& draft) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return end(PortalAnswer::NotThere);
  const QString token = "velmora" + QUuid::createUuid().toString(QUuid::Id128);
  const QString sender = bus.baseService().mid(1).replace('.', '_');
  listen(QString(portalPath) + "/request/" + sender + '/' + token);
  QDBusMessage call = QDBusMessage::createMethodCall(portal, portalPath, mailInterface, "ComposeEmail");
  call.setArguments({QString(), optionsFor(draft, token)});
  const bool runs = bus.interface()->isServiceRegistered(portal);
  auto* owner = new QDBusServiceWatcher(portal, bus, QDBusServiceWatcher::WatchForUnregistration, this);
  connect(owner, &QDBusServiceWatcher::serviceUnregistered, this, [this] { end(PortalAnswer::NotThere); });
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, runs ? patience : patienceForStart), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] { begun(*watcher); });
}

// NOLINTEND(cppcoreguidelines-owning-memory)

void MailPortal::listen(const QString& request) {
  request_ = request;
  QDBusConnection::sessionBus().connect(portal, request_, requestInterface, "Response", this,
                                        SLOT(respond(uint, QVariantMap)));
}

/// An old portal chooses the request's path itself.
void MailPortal::begun(const QDBusPendingCallWatcher& call) {
  const QDBusPendingReply<QDBusObjectPath> reply = call;
  if (reply.isError()) return end(PortalAnswer::NotThere);
  if (reply.value().path() != request_) listen(reply.value().path());
}

void MailPortal::respond(uint response, const QVariantMap& /*results*/) {
  constexpr uint taken = 0;
  constexpr uint cancelled = 1;
  if (response == taken) return end(PortalAnswer::Taken);
  end(response == cancelled ? PortalAnswer::Cancelled : PortalAnswer::NotThere);
}

void MailPortal::end(PortalAnswer answer) {
  const auto answered = std::exchange(answered_, {});
  deleteLater();
  if (answered) answered(answer);
}

#else

void MailPortal::compose(const MailDraft& /*draft*/, Answered answered) { answered(PortalAnswer::NotThere); }

void MailPortal::respond(uint /*response*/, const QVariantMap& /*results*/) {}

#endif

}  // namespace velmora
