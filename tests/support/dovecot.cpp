#include "support/dovecot.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>

namespace velmora::test {

Dovecot::Dovecot() : ports_(run("start")) { run("user", {"user", "secret"}); }

Dovecot::~Dovecot() { run("stop"); }

void Dovecot::deliver(const std::string& bytes) const {
  QFile file(folder_.filePath("message"));
  EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(QByteArray::fromStdString(bytes)) == std::ssize(bytes));
  file.close();
  run("deliver", {"user", file.fileName()});
}

QByteArray Dovecot::run(const QString& action, const QStringList& arguments) const {
  QProcess script;
  script.start(VELMORA_SCRIPTS "/dovecot", QStringList{action, folder_.path()} + arguments);
  EXPECT_TRUE(script.waitForFinished() && script.exitCode() == 0) << script.readAllStandardError().toStdString();
  return script.readAllStandardOutput();
}

std::uint16_t Dovecot::port(const QByteArray& name) const {
  const qsizetype begin = ports_.indexOf(name) + name.size();
  return ports_.mid(begin, ports_.indexOf('\n', begin) - begin).toUShort();
}

}  // namespace velmora::test
