#include "support/sound_server.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>

#include <QFile>
#include <QTest>
#include <csignal>

namespace velmora::test {

SoundServer::SoundServer() {
  const QString socket = folder_.filePath("socket");
  qputenv("PULSE_SERVER", QFile::encodeName("unix:" + socket));
  // A test that crashes leaves none behind.
  server_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
  server_.setStandardErrorFile(folder_.filePath("log"));
  server_.start("pulseaudio", {"-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "--realtime=no",
                               "--high-priority=no", QString("-Lmodule-null-sink sink_name=ear rate=%1").arg(rate),
                               "-Lmodule-native-protocol-unix auth-anonymous=1 socket=" + socket});
  EXPECT_TRUE(QTest::qWaitFor([&socket] { return QFile::exists(socket); }, 20'000)) << "no sound server";
  recorder_.start("parec", {"--raw", "--device=ear.monitor", "--format=s16le", "--channels=1", "--latency-msec=20",
                            QString("--rate=%1").arg(rate)});
  EXPECT_TRUE(QTest::qWaitFor([this] { return !recording().isEmpty(); }, 20'000)) << "no recording";
}

SoundServer::~SoundServer() {
  recorder_.kill();
  recorder_.waitForFinished();
  end();
}

QByteArray SoundServer::recording() {
  recording_ += recorder_.readAllStandardOutput();
  return recording_;
}

void SoundServer::catchUp() {
  // The device plays silence all the time.
  const auto enough = recording().size() + rate * 2;
  EXPECT_TRUE(QTest::qWaitFor([&] { return recording().size() >= enough; }, 20'000)) << "the recording stands still";
}

void SoundServer::end() {
  server_.terminate();
  EXPECT_TRUE(server_.state() == QProcess::NotRunning || server_.waitForFinished());
}

}  // namespace velmora::test
