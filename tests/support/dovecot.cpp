#include "support/dovecot.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

namespace velmora::test {
namespace {

std::uint16_t portIn(const QString& ports, const QString& name) {
  return QRegularExpression(name + "=(\\d+)").match(ports).captured(1).toUShort();
}

}  // namespace

Dovecot::Dovecot() {
  const QString ports = runScript("dovecot", {"start", folder_.path()});
  plain_ = portIn(ports, "plain");
  tls_ = portIn(ports, "tls");
}

Dovecot::~Dovecot() { runScript("dovecot", {"stop", folder_.path()}); }

void Dovecot::addUser(const QString& name) { runScript("dovecot", {"user", folder_.path(), name, "secret"}); }

void Dovecot::deliver(const QString& name, const QStringList& files) {
  runScript("dovecot", QStringList{"deliver", folder_.path(), name} + files);
}

QStringList Dovecot::farewells() const {
  QFile log(folder_.filePath("log"));
  if (!log.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(log.readAll()).split('\n').filter("retr=");
}

QString runScript(const QString& name, const QStringList& arguments) {
  QProcess script;
  script.start(VELMORA_SOURCE_DIR "/scripts/" + name, arguments);
  const bool done = script.waitForFinished() && script.exitStatus() == QProcess::NormalExit && script.exitCode() == 0;
  EXPECT_TRUE(done) << script.readAllStandardError().toStdString() << script.errorString().toStdString();
  return QString::fromUtf8(script.readAllStandardOutput());
}

}  // namespace velmora::test
