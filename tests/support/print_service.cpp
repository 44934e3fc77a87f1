#include "support/print_service.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>
#include <csignal>

namespace velmora::test {

PrintService::PrintService() {
  for (const auto* wish : {"PRINTER", "LPDEST"}) qunsetenv(wish);
  qputenv("HOME", QFile::encodeName(folder_.path()));
  // A test that crashes leaves none behind.
  service_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
  service_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  service_.start(VELMORA_SCRIPTS "/print_service", {folder_.filePath("service")});
  EXPECT_TRUE(QTest::qWaitFor([this] { return service_.canReadLine(); }, 20'000)) << "no print service";
  qputenv("CUPS_SERVER", service_.readLine().trimmed().replace("server=", ""));
}

void PrintService::hold(const QByteArray& reasons) {
  QFile file(folder_.filePath("service/hold"));
  EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(reasons) == reasons.size());
}

void PrintService::goOn() { EXPECT_TRUE(QFile::remove(folder_.filePath("service/hold"))); }

QStringList PrintService::printed() const {
  return QDir(folder_.filePath("service/printed")).entryList({"*.pdf"}, QDir::Files).replaceInStrings(".pdf", "");
}

QByteArray PrintService::wishes(const QString& job) const {
  QFile file(folder_.filePath("service/printed/" + job + ".job"));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  return file.readAll();
}

void PrintService::end() {
  service_.terminate();
  EXPECT_TRUE(service_.state() == QProcess::NotRunning || service_.waitForFinished());
}

QByteArray outputOf(const QString& program, const QStringList& arguments) {
  const QString found = QStandardPaths::findExecutable(program);
  QProcess process;
  process.start(found.isEmpty() ? "/usr/sbin/" + program : found, arguments);
  EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0)
      << program.toStdString() << ": " << process.readAllStandardError().toStdString();
  return process.readAllStandardOutput();
}

}  // namespace velmora::test
