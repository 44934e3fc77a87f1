#include "platform/qt/services/running_instance.h"

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <QCryptographicHash>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <QFileInfo>
#include <QTimer>
#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "platform/qt/services/come_forward.h"
#include "platform/qt/services/qt_settings.h"
#include "platform/qt/services/waiting.h"

namespace velmora {

namespace {

using namespace std::chrono_literals;

const auto applicationId = QStringLiteral(VELMORA_APPLICATION_ID);
const auto interfaceName = QStringLiteral("org.freedesktop.Application");

/// One that holds the lock already may not have reached the bus yet, or be busy for a moment.
constexpr auto patience = 5s;

/// Of the one that runs on these settings. A second one may run on others, as for a test or a second user's mail.
QString busName() {
  const QFileInfo file(QtSettings::fileName());
  const QByteArray settings = (QFileInfo(file.path()).canonicalFilePath() + '/' + file.fileName()).toUtf8();
  return applicationId + ".On" + QCryptographicHash::hash(settings, QCryptographicHash::Sha256).left(8).toHex();
}

/// The application's id in the form of a path, as the desktops' standard has it.
QString objectPath() { return '/' + QString(applicationId).replace('.', '/').replace('-', '_'); }

struct Action {
  Command command;
  const char* name;
};

constexpr std::array<Action, 2> actions = {{{Command::CheckAll, "check-all"}, {Command::NewMessage, "new-message"}}};

constexpr auto identifierKey = "desktop-startup-id";
constexpr auto tokenKey = "activation-token";

constexpr std::array<std::pair<const char*, const char*>, 2> variables = {
    {{"DESKTOP_STARTUP_ID", identifierKey}, {activationTokenVariable, tokenKey}}};

/// The calls, and the types of their arguments, of which the last one holds notes. Others are never looked into.
constexpr std::array<std::pair<const char*, const char*>, 3> calls = {
    {{"Activate", "a{sv}"}, {"Open", "asa{sv}"}, {"ActivateAction", "sava{sv}"}}};

std::optional<Command> commandIn(const QDBusMessage& call) {
  const bool isCall = std::any_of(calls.begin(), calls.end(), [&call](const auto& each) {
    return call.member() == each.first && call.signature() == each.second;
  });
  if (!isCall || (!call.interface().isEmpty() && call.interface() != interfaceName)) return std::nullopt;
  if (call.member() != "ActivateAction") return Command::Show;
  for (const auto& [command, name] : actions) {
    if (call.arguments().constFirst().toString() == name) return command;
  }
  return std::nullopt;
}

QDBusMessage callFor(Command command, const QVariantMap& notes) {
  for (const auto& [action, name] : actions) {
    if (action != command) continue;
    auto call = QDBusMessage::createMethodCall(busName(), objectPath(), interfaceName, "ActivateAction");
    call.setArguments({QString(name), QVariantList(), notes});
    return call;
  }
  auto call = QDBusMessage::createMethodCall(busName(), objectPath(), interfaceName, "Activate");
  call.setArguments({notes});
  return call;
}

bool waitForName(const QDBusConnection& bus) {
  Waiting waiting;
  const QString name = busName();
  const QDBusServiceWatcher watcher(name, bus, QDBusServiceWatcher::WatchForRegistration);
  QObject::connect(&watcher, &QDBusServiceWatcher::serviceRegistered, &watcher, [&waiting] { waiting.wake(); });
  if (!bus.interface()->isServiceRegistered(name)) waiting.wait(patience);
  return bus.interface()->isServiceRegistered(name);
}

}  // namespace

/// A virtual object, since the names of the calls are the standard's and need no class that has them as slots.
class RunningInstance::Object : public QDBusVirtualObject {
 public:
  explicit Object(Carry carry) : carry_(std::move(carry)) {}

  QString introspect(const QString& /*path*/) const override {
    return QStringLiteral(
               "<interface name=\"%1\">"
               "<method name=\"Activate\"><arg type=\"a{sv}\" direction=\"in\"/></method>"
               "<method name=\"Open\"><arg type=\"as\" direction=\"in\"/><arg type=\"a{sv}\" "
               "direction=\"in\"/></method>"
               "<method name=\"ActivateAction\"><arg type=\"s\" direction=\"in\"/><arg type=\"av\" direction=\"in\"/>"
               "<arg type=\"a{sv}\" direction=\"in\"/></method></interface>")
        .arg(interfaceName);
  }

  bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
    const auto command = commandIn(call);
    if (!command) return false;
    bus.send(call.createReply());
    const auto notes = qdbus_cast<QVariantMap>(call.arguments().constLast());
    QTimer::singleShot(0, this, [this, command = *command, notes] {
      useActivationToken(notes.value(tokenKey).toString().toUtf8());
      endStartUpNotice(notes);
      carry_(command);
    });
    return true;
  }

 private:
  Carry carry_;
};

QVariantMap startUpNotes() {
  QVariantMap notes;
  for (const auto& [variable, key] : variables) {
    if (qEnvironmentVariableIsSet(variable)) notes[key] = qEnvironmentVariable(variable);
  }
  return notes;
}

void endStartUpNotice(const QVariantMap& notes) { endStartUpNotice(notes.value(identifierKey).toString().toUtf8()); }

RunningInstance::RunningInstance(Carry carry) : object_(std::make_unique<Object>(std::move(carry))) {
  for (const auto& [variable, key] : variables) qunsetenv(variable);
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  bus.registerVirtualObject(objectPath(), object_.get());
  for (const QString& name : {busName(), applicationId}) bus.registerService(name);
}

RunningInstance::~RunningInstance() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  for (const QString& name : {busName(), applicationId}) bus.unregisterService(name);
  bus.unregisterObject(objectPath());
}

bool RunningInstance::tell(Command command, const QVariantMap& notes) {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected() || !waitForName(bus)) return false;
  const auto longest = static_cast<int>(std::chrono::milliseconds(patience).count());
  return bus.call(callFor(command, notes), QDBus::Block, longest).type() == QDBusMessage::ReplyMessage;
}

}  // namespace velmora

#else

namespace velmora {

class RunningInstance::Object {};

QVariantMap startUpNotes() { return {}; }

void endStartUpNotice(const QVariantMap& /*notes*/) {}

RunningInstance::RunningInstance(Carry /*carry*/) {}

RunningInstance::~RunningInstance() = default;

bool RunningInstance::tell(Command /*command*/, const QVariantMap& /*notes*/) { return false; }

}  // namespace velmora
#endif
