#include "platform/qt/services/keyring_lock.h"

#include <QtGlobal>

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

namespace velmora {

bool isKeyringLocked() {
  constexpr int patience = 2000;  // milliseconds, of a service that has just answered the library
  QDBusMessage call = QDBusMessage::createMethodCall(
      "org.freedesktop.secrets", "/org/freedesktop/secrets/aliases/default", "org.freedesktop.DBus.Properties", "Get");
  call.setArguments({"org.freedesktop.Secret.Collection", "Locked"});
  call.setAutoStartService(false);
  const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, patience);
  if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != "v") return false;
  return reply.arguments().constFirst().value<QDBusVariant>().variant().toBool();
}

}  // namespace velmora

#else

namespace velmora {

bool isKeyringLocked() { return false; }

}  // namespace velmora
#endif
