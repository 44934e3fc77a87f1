#pragma once

#include <QObject>
#include <functional>

#include "platform/machine.h"

class QDBusConnection;
class QDBusPendingCallWatcher;
class QDBusVariant;

namespace velmora {

/// Watches sleep (org.freedesktop.login1) and network (org.freedesktop.NetworkManager or, where that isn't there, the
/// desktop's portal org.freedesktop.portal.NetworkMonitor) as long as it lives. Each of them may lack, come, go and
/// start anew. Waits for no answer.
class MachineWatch : public QObject {
  Q_OBJECT

 public:
  /// `back` is called when the machine has woken, and when it has its network back.
  explicit MachineWatch(std::function<void()> back);

  Connectivity connectivity() const { return network_; }

 private:
  void watchSleep(QDBusConnection& bus);
  void watchManager(QDBusConnection& bus);
  void watchPortal();
  void askManager();
  void askPortal();
  void takeManagersAnswer(const QDBusPendingCallWatcher& call);
  void takePortalsAnswer(const QDBusPendingCallWatcher& call);
  void managerIsGone();
  void become(Connectivity network);

  Q_SLOT void sleepChanged(bool begins);
  Q_SLOT void managerChanged(uint state);
  Q_SLOT void portalChanged();

  std::function<void()> back_;
  Connectivity network_ = Connectivity::Unknown;
  bool managerTells_ = false;  ///< the portal isn't asked
};

}  // namespace velmora
