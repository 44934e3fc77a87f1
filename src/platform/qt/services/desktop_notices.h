#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <optional>

#include "platform/notice.h"

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace velmora {

/// The program's notifications, one of a kind, which a service of the session's bus shows
/// (org.freedesktop.Notifications). Nothing waits for it. Of what the service tells, only ids and keys that were given
/// count.
class DesktopNotices : public QObject {
  Q_OBJECT

 public:
  /// Once `isOver` nobody hears of anything any more.
  explicit DesktopNotices(std::function<bool()> isOver);

  /// A service runs, or the bus would start it.
  static bool areThere();

  /// In the place of the last one of its kind; one that is still on its way there is followed by this one.
  void show(const Notice& notice, NoticeEvents events);

  void withdraw(Notice::Kind kind);

 private:
  using Answered = std::function<void(const QDBusPendingCallWatcher&)>;

  struct Wanted {
    Notice notice;
    NoticeEvents events;
  };

  /// What is known of the notification of a kind.
  struct Place {
    uint id = 0;  ///< that the service has given it, 0 while none is there
    Wanted shown;
    std::optional<Wanted> sent;  ///< the service has not answered yet
    std::optional<Wanted> next;
    bool unwanted = false;  ///< what was sent is to go as soon as it is there
  };

  void ask(const QDBusMessage& call, Answered answered);
  void askCapabilities();
  void takeCapabilities(const QDBusPendingCallWatcher& call);
  void sendNext();
  void send(Place& place);
  void takeId(Place& place, const QDBusPendingCallWatcher& call);
  void takeAway(Place& place);
  void forgetService();
  void tellNotShown(const Wanted& wanted);
  Place* placeOf(uint id);

  Q_SLOT void closed(uint id, uint reason);
  Q_SLOT void invoked(uint id, const QString& key);
  Q_SLOT void giveToken(uint id, const QString& token);

  std::function<bool()> isOver_;
  std::array<Place, 2> places_;              ///< by kind
  std::optional<QStringList> capabilities_;  ///< of the service that is there
  bool asking_ = false;                      ///< for them
  uint tokenFor_ = 0;                        ///< the notification that the token came for
  QByteArray token_;
};

}  // namespace velmora
