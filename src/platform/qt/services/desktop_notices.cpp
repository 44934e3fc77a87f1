#include "platform/qt/services/desktop_notices.h"

#include <utility>

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QGuiApplication>

#include "platform/qt/services/come_forward.h"
#include "platform/qt/widgets/harmless_text.h"
#endif

namespace velmora {

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* servicePath = "/org/freedesktop/Notifications";

/// In milliseconds. A service may have to be started first.
constexpr int patience = 25'000;

// In UTF-16 units. What the service cuts off itself is nobody's choice.
constexpr qsizetype longestLine = 100;
constexpr qsizetype longestLabel = 50;
constexpr qsizetype longestToken = 1000;

constexpr const char* clickKey = "default";

struct KindOfNotice {
  uchar urgency;
  const char* category;
};

/// By kind.
constexpr std::array<KindOfNotice, 2> kinds = {{{1, "email.arrived"}, {0, "network.error"}}};

std::size_t indexOf(Notice::Kind kind) { return static_cast<std::size_t>(kind); }

QDBusMessage callOf(const char* method) {
  return QDBusMessage::createMethodCall(service, servicePath, service, method);
}

QString bodyOf(const Notice& notice, const QStringList& capabilities) {
  if (!capabilities.contains("body")) return {};
  QStringList lines;
  for (const std::string& line : notice.lines) lines += harmlessLine(line, longestLine);
  const QString body = lines.join('\n');
  return capabilities.contains("body-markup") ? body.toHtmlEscaped() : body;
}

/// By which the service tells of a choice.
QString keyOf(std::size_t choice) { return choice == 0 ? QString(clickKey) : QString::number(choice); }

/// Keys and labels in turn.
QStringList actionsOf(const Notice& notice, const QStringList& capabilities) {
  if (!capabilities.contains("actions")) return {};
  QStringList actions = {keyOf(0), "Show"};
  std::size_t number = 0;
  for (const std::string& choice : notice.choices) {
    actions += {keyOf(++number), harmlessLine(choice, longestLabel)};
  }
  return actions;
}

/// The program has sounds of its own.
QVariantMap hintsOf(Notice::Kind kind) {
  const KindOfNotice& its = kinds.at(indexOf(kind));
  return {{"urgency", QVariant::fromValue(its.urgency)},
          {"category", its.category},
          {"desktop-entry", QGuiApplication::desktopFileName()},
          {"suppress-sound", true}};
}

}  // namespace

DesktopNotices::DesktopNotices(std::function<bool()> isOver) : isOver_(std::move(isOver)) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  bus.connect(service, servicePath, service, "NotificationClosed", this, SLOT(closed(uint, uint)));
  bus.connect(service, servicePath, service, "ActionInvoked", this, SLOT(invoked(uint, QString)));
  bus.connect(service, servicePath, service, "ActivationToken", this, SLOT(giveToken(uint, QString)));
  auto* owner = new QDBusServiceWatcher(service, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
  connect(owner, &QDBusServiceWatcher::serviceOwnerChanged, this, &DesktopNotices::forgetService);
}

bool DesktopNotices::areThere() {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return false;
  const QDBusReply<bool> runs = bus.interface()->isServiceRegistered(service);
  if (runs.isValid() && runs.value()) return true;
  const QDBusReply<QStringList> startable = bus.interface()->activatableServiceNames();
  return startable.isValid() && startable.value().contains(service);
}

void DesktopNotices::show(const Notice& notice, NoticeEvents events) {
  Place& place = places_.at(indexOf(notice.kind));
  place.next = Wanted{notice, std::move(events)};
  place.unwanted = false;
  sendNext();
}

void DesktopNotices::withdraw(Notice::Kind kind) {
  Place& place = places_.at(indexOf(kind));
  place.next.reset();
  place.unwanted = place.sent.has_value();
  takeAway(place);
}

void DesktopNotices::ask(const QDBusMessage& call, Answered answered) {
  auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call, patience), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, answered = std::move(answered)] {
    watcher->deleteLater();
    answered(*watcher);
  });
}

/// Only who understands markup is sent any.
void DesktopNotices::askCapabilities() {
  if (std::exchange(asking_, true)) return;
  ask(callOf("GetCapabilities"), [this](const QDBusPendingCallWatcher& call) { takeCapabilities(call); });
}

void DesktopNotices::takeCapabilities(const QDBusPendingCallWatcher& call) {
  asking_ = false;
  const QDBusPendingReply<QStringList> reply = call;
  if (!reply.isError()) {
    capabilities_ = reply.value();
    return sendNext();
  }
  for (Place& place : places_) {
    if (const auto given = std::exchange(place.next, std::nullopt)) tellNotShown(*given);
  }
}

void DesktopNotices::sendNext() {
  for (Place& place : places_) {
    if (!place.next || place.sent) continue;
    if (!capabilities_) return askCapabilities();
    send(place);
  }
}

void DesktopNotices::send(Place& place) {
  place.sent = std::exchange(place.next, std::nullopt);
  const Notice& notice = place.sent->notice;
  constexpr int asLongAsTheDesktopLikes = -1;
  QDBusMessage call = callOf("Notify");
  call.setArguments({QCoreApplication::applicationName(), place.id, QCoreApplication::applicationName(),
                     harmlessLine(notice.summary, longestLine), bodyOf(notice, *capabilities_),
                     actionsOf(notice, *capabilities_), hintsOf(notice.kind), asLongAsTheDesktopLikes});
  ask(call, [this, &place](const QDBusPendingCallWatcher& answer) { takeId(place, answer); });
}

/// A service that gives no id could never be told to replace what it shows.
void DesktopNotices::takeId(Place& place, const QDBusPendingCallWatcher& call) {
  const QDBusPendingReply<uint> reply = call;
  const Wanted sent = *std::exchange(place.sent, std::nullopt);
  place.id = reply.isError() ? 0 : reply.value();
  place.shown = sent;
  if (place.id == 0) tellNotShown(sent);
  if (std::exchange(place.unwanted, false)) takeAway(place);
  sendNext();
}

void DesktopNotices::takeAway(Place& place) {
  const uint id = std::exchange(place.id, 0);
  if (id == 0) return;
  QDBusMessage call = callOf("CloseNotification");
  call.setArguments({id});
  QDBusConnection::sessionBus().send(call);
}

/// Another one, or none, knows nothing of what was shown.
void DesktopNotices::forgetService() {
  capabilities_.reset();
  for (Place& place : places_) place.id = 0;
}

void DesktopNotices::tellNotShown(const Wanted& wanted) {
  if (wanted.events.notShown && !isOver_()) wanted.events.notShown();
}

DesktopNotices::Place* DesktopNotices::placeOf(uint id) {
  for (Place& place : places_) {
    if (id != 0 && place.id == id) return &place;
  }
  return nullptr;
}

void DesktopNotices::closed(uint id, uint /*reason*/) {
  if (Place* place = placeOf(id)) place->id = 0;
}

/// What is chosen may bring about that another one is shown, or the program's end.
void DesktopNotices::invoked(uint id, const QString& key) {
  const Place* place = placeOf(id);
  if (place == nullptr || isOver_()) return;
  const std::size_t choice = key.toUInt();  // 0 for a click
  const bool isOurs = choice <= place->shown.notice.choices.size() && key == keyOf(choice);
  if (!isOurs) return;
  const NoticeEvents events = place->shown.events;
  useActivationToken(std::exchange(tokenFor_, 0) == id ? std::exchange(token_, {}) : QByteArray());
  if (events.chosen) events.chosen(choice);
}

/// It comes right before what it is for.
void DesktopNotices::giveToken(uint id, const QString& token) {
  if (placeOf(id) == nullptr || token.size() > longestToken) return;
  tokenFor_ = id;
  token_ = token.toUtf8();
}

#else

DesktopNotices::DesktopNotices(std::function<bool()> isOver) : isOver_(std::move(isOver)) {}

bool DesktopNotices::areThere() { return false; }

void DesktopNotices::show(const Notice& /*notice*/, NoticeEvents events) {
  if (events.notShown) events.notShown();
}

void DesktopNotices::withdraw(Notice::Kind /*kind*/) {}

void DesktopNotices::closed(uint /*id*/, uint /*reason*/) {}

void DesktopNotices::invoked(uint /*id*/, const QString& /*key*/) {}

void DesktopNotices::giveToken(uint /*id*/, const QString& /*token*/) {}

#endif

}  // namespace velmora
