#include <gmock/gmock.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QtGlobal>

namespace {

/// A warning that nobody expects is a fault, of the code or of the test.
void failOnWarning(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
  if (type == QtDebugMsg || type == QtInfoMsg) return;
  // The platform without a screen says so when a menu opens.
  if (text.startsWith("This plugin does not support")) return;
  ADD_FAILURE() << "logged: " << text.toStdString();
}

}  // namespace

int main(int argc, char* argv[]) {
  testing::InitGoogleMock(&argc, argv);
  const QTemporaryDir home;
  for (const auto* folder : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
    qputenv(folder, home.path().toUtf8());
  }
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  qInstallMessageHandler(failOnWarning);
  return RUN_ALL_TESTS();
}
