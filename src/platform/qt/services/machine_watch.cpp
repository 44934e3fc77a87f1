#include "platform/qt/services/machine_watch.h"

#include <utility>

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#endif

namespace velmora {

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)

namespace {

/// An object on a bus, and the interface of it that is spoken to.
struct Service {
  const char* name;
  const char* path;
  const char* interface;
};

constexpr Service sleep = {"org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager"};
constexpr Service manager = {"org.freedesktop.NetworkManager", "/org/freedesktop/NetworkManager",
                             "org.freedesktop.NetworkManager"};
constexpr Service portal = {"org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                            "org.freedesktop.portal.NetworkMonitor"};

/// NetworkManager's states are tens: 10 to 40 lead up to a network, from 50 on there is one, if only the local one.
Connectivity meaningOf(uint state) {
  constexpr uint asleep = 10;
  constexpr uint connectedLocally = 50;
  if (state < asleep) return Connectivity::Unknown;
  return state < connectedLocally ? Connectivity::Offline : Connectivity::Online;
}

// NOLINTBEGIN(cppcoreguidelines-owning-memory): the watch owns them

template <class Come, class Go>
void watchOwner(QObject& watch, const Service& service, const QDBusConnection& bus, Come come, Go go) {
  auto* owner = new QDBusServiceWatcher(service.name, bus, QDBusServiceWatcher::WatchForOwnerChange, &watch);
  QObject::connect(owner, &QDBusServiceWatcher::serviceRegistered, &watch, come);
  QObject::connect(owner, &QDBusServiceWatcher::serviceUnregistered, &watch, go);
}

template <class Take>
void ask(QObject& watch, const QDBusConnection& bus, const QDBusMessage& call, Take take) {
  auto* pending = new QDBusPendingCallWatcher(bus.asyncCall(call), &watch);
  QObject::connect(pending, &QDBusPendingCallWatcher::finished, &watch, [pending, take] {
    pending->deleteLater();
    take(*pending);
  });
}

// NOLINTEND(cppcoreguidelines-owning-memory)

}  // namespace

MachineWatch::MachineWatch(std::function<void()> back) : back_(std::move(back)) {
  watchPortal();
  QDBusConnection bus = QDBusConnection::systemBus();
  if (bus.isConnected()) {
    watchSleep(bus);
    watchManager(bus);
  } else {
    askPortal();
  }
}

void MachineWatch::watchSleep(QDBusConnection& bus) {
  bus.connect(sleep.name, sleep.path, sleep.interface, "PrepareForSleep", this, SLOT(sleepChanged(bool)));
}

void MachineWatch::watchManager(QDBusConnection& bus) {
  bus.connect(manager.name, manager.path, manager.interface, "StateChanged", this, SLOT(managerChanged(uint)));
  watchOwner(
      *this, manager, bus, [this] { askManager(); }, [this] { managerIsGone(); });
  askManager();
}

void MachineWatch::watchPortal() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  bus.connect(portal.name, portal.path, portal.interface, "changed", this, SLOT(portalChanged()));
  watchOwner(
      *this, portal, bus, [this] { portalChanged(); },
      [this] {
        if (!managerTells_) become(Connectivity::Unknown);
      });
}

/// It is a part of the system that isn't started for the sake of this question.
void MachineWatch::askManager() {
  auto call = QDBusMessage::createMethodCall(manager.name, manager.path, "org.freedesktop.DBus.Properties", "Get");
  call.setArguments({QString(manager.interface), QStringLiteral("State")});
  call.setAutoStartService(false);
  ask(*this, QDBusConnection::systemBus(), call,
      [this](const QDBusPendingCallWatcher& answer) { takeManagersAnswer(answer); });
}

void MachineWatch::takeManagersAnswer(const QDBusPendingCallWatcher& call) {
  const QDBusPendingReply<QDBusVariant> reply = call;
  const QVariant state = reply.isError() ? QVariant() : reply.value().variant();
  if (state.userType() != QMetaType::UInt) return managerIsGone();
  managerChanged(state.toUInt());
}

void MachineWatch::managerIsGone() {
  managerTells_ = false;
  become(Connectivity::Unknown);
  askPortal();
}

void MachineWatch::askPortal() {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  ask(*this, bus, QDBusMessage::createMethodCall(portal.name, portal.path, portal.interface, "GetAvailable"),
      [this](const QDBusPendingCallWatcher& answer) { takePortalsAnswer(answer); });
}

void MachineWatch::takePortalsAnswer(const QDBusPendingCallWatcher& call) {
  if (managerTells_) return;
  const QDBusPendingReply<bool> reply = call;
  if (reply.isError()) return become(Connectivity::Unknown);
  become(reply.value() ? Connectivity::Online : Connectivity::Offline);
}

void MachineWatch::sleepChanged(bool begins) {
  if (!begins) back_();
}

void MachineWatch::managerChanged(uint state) {
  managerTells_ = true;
  become(meaningOf(state));
}

void MachineWatch::portalChanged() {
  if (!managerTells_) askPortal();
}

void MachineWatch::become(Connectivity network) {
  const Connectivity before = std::exchange(network_, network);
  if (before == Connectivity::Offline && network == Connectivity::Online) back_();
}

#else

MachineWatch::MachineWatch(std::function<void()> back) : back_(std::move(back)) {}

void MachineWatch::sleepChanged(bool /*begins*/) {}

void MachineWatch::managerChanged(uint /*state*/) {}

void MachineWatch::portalChanged() {}

#endif

}  // namespace velmora
