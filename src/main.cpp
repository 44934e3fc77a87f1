#include <QApplication>
#include <QTimer>

#include "app/program.h"
#include "app/shut_down.h"
#include "app/start_up.h"
#include "platform/mime/gmime_reader.h"
#include "platform/qt/services/core_dumps.h"
#include "platform/qt/services/end_of_session.h"
#include "platform/qt/services/qt_platform.h"
#include "platform/qt/strings.h"
#include "platform/qt/tray/tray_view.h"
#include "platform/qt/windows/check_message_view.h"
#include "platform/qt/windows/first_use_view.h"
#include "platform/qt/windows/main_window_view.h"
#include "platform/qt/windows/preview_view.h"
#include "platform/qt/windows/progress_view.h"
#include "platform/qt/windows/rule_file_view.h"
#include "platform/qt/windows/rule_fits_view.h"
#include "platform/qt/windows/rule_report_view.h"

namespace {

using namespace velmora;

std::string damagedSettings(const QString& file) {
  return "The settings file cannot be read:\r\n" + utf8(file) +
         "\r\n\r\nVelmora runs with what can be read of it and with default settings.\r\n"
         "The file is left as it is, and nothing will be saved.\r\n\r\n"
         "Please mend or remove the file and start Velmora again.\r\n";
}

std::string openSettings(const QString& path) {
  return "The settings hold passwords, and other users can read or change this:\r\n" + utf8(path) +
         "\r\n\r\nVelmora cannot make it yours alone and runs with default settings.\r\n"
         "All is left as it is, and nothing will be saved.\r\n\r\n"
         "Please make yourself its owner, take the rights of all others away,\r\nand start Velmora again.\r\n";
}

/// Nothing is lost by it: the file stays as it is for the user to mend.
void warnOfSettings(QtPlatform& platform) {
  const QtSettings& settings = platform.settingsFile();
  if (settings.isKept()) return;
  Question question;
  question.text = settings.openFile() ? openSettings(*settings.openFile()) : damagedSettings(QtSettings::fileName());
  question.title = platform.applicationTitle() + " - Settings Error";
  question.icon = Question::Icon::Critical;
  platform.MsgBox(question);
}

}  // namespace

int main(int argc, char* argv[]) {
  forbidCoreDumps();
  const QApplication application(argc, argv);
  QApplication::setApplicationName("Velmora");
  QApplication::setOrganizationName("Kestrum");
  QApplication::setDesktopFileName("Velmora");
  QApplication::setQuitOnLastWindowClosed(false);

  const GmimeReader reader;
  QtPlatform platform(reader);
  Program program(platform);
  MainWindowView view(program.frmMain);
  const TrayView tray(program.frmMain, view);
  const PreviewView preview(program.frmPreview, &view);
  const ProgressView printing(program.frmPrinting, "frmPrinting", &view);
  const ProgressView original(program.frmOriginal, "frmOriginal", &view);
  const RuleFileView ruleFile(program.frmRuleFile, &view);
  const RuleFitsView ruleFits(program.frmRuleFits, &view);
  const RuleReportView ruleReport(program.frmRuleReport);
  const CheckMessageView message(program.frmMessage);
  const FirstUseView firstUse(program.frmFirstUse, &view);
  const EndOfSession endOfSession([&program] { SaveSession(program); }, [&program] { EndApplication(program); });
  if (!Main(program) || platform.isQuitting()) return 0;
  QtPlatform::provideSounds();
  // Once the event loop runs: what ends the program also ends the box then.
  QTimer::singleShot(0, &view, [&platform] { warnOfSettings(platform); });
  return QApplication::exec();
}
