#include "platform/qt/tray/tray_host.h"

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <string>

#include "platform/qt/services/x11.h"
#else
#include <QSystemTrayIcon>
#endif

// NOLINTBEGIN(cppcoreguidelines-owning-memory): objects are owned by their parents

namespace velmora {

TrayHost::TrayHost() {
  watchNotifier();
  watchEmbedding();
}

void TrayHost::decide() {
  if (!answered_) return;
  if (kind_ == Kind::None && notifier_) kind_ = Kind::Notifier;
  if (kind_ == Kind::None && embedding_) kind_ = Kind::Embedding;
  Present = (kind_ == Kind::Notifier && notifier_) || (kind_ == Kind::Embedding && embedding_);
}

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)

namespace {

const auto watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");  // and of its interface
const auto watcherPath = QStringLiteral("/StatusNotifierWatcher");

/// The window that owns it tells of the tray.
xcb_atom_t traySelection(xcb_connection_t* display) {
  return x11Atom(display, "_NET_SYSTEM_TRAY_S" + std::to_string(x11Screen()));
}

bool isOwned(xcb_connection_t* display, xcb_atom_t selection) {
  const auto asked = xcb_get_selection_owner(display, selection);
  const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(display, asked, nullptr),
                                                        std::free);
  return reply && reply->owner != XCB_NONE;
}

}  // namespace

void TrayHost::watchNotifier() {
  ask_.setSingleShot(true);  // one question after any number of signals
  connect(&ask_, &QTimer::timeout, this, &TrayHost::askNotifier);
  QDBusConnection bus = QDBusConnection::sessionBus();
  const auto* service = new QDBusServiceWatcher(watcherName, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
  connect(service, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] { ask_.start(); });
  for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
    bus.connect(watcherName, watcherPath, watcherName, signal, &ask_, SLOT(start()));
  }
  askNotifier();
}

void TrayHost::askNotifier() {
  auto question = QDBusMessage::createMethodCall(watcherName, watcherPath, "org.freedesktop.DBus.Properties", "Get");
  question << watcherName << "IsStatusNotifierHostRegistered";
  question.setAutoStartService(false);
  auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    const QDBusPendingReply<QDBusVariant> reply = *answer;
    answer->deleteLater();
    notifier_ = reply.isValid() && reply.value().variant().toBool();
    answered_ = true;
    decide();
  });
}

void TrayHost::watchEmbedding() {
  xcb_connection_t* display = x11Display();
  const xcb_atom_t selection = display != nullptr ? traySelection(display) : static_cast<xcb_atom_t>(XCB_NONE);
  if (selection == XCB_NONE) return;
  const auto look = [this, display, selection] {
    embedding_ = isOwned(display, selection);
    decide();
  };
  look();
  auto* clock = new QTimer(this);
  connect(clock, &QTimer::timeout, this, look);
  clock->start(1000);
}

#else

void TrayHost::watchNotifier() { answered_ = true; }

void TrayHost::askNotifier() {}

void TrayHost::watchEmbedding() {
  embedding_ = QSystemTrayIcon::isSystemTrayAvailable();
  decide();
}

#endif

}  // namespace velmora

// NOLINTEND(cppcoreguidelines-owning-memory)
