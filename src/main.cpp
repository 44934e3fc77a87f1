#include <QApplication>
#include <QTimer>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "app/carry_out.h"
#include "app/program.h"
#include "app/shut_down.h"
#include "app/start_up.h"
#include "platform/mime/gmime_reader.h"
#include "platform/qt/console.h"
#include "platform/qt/services/core_dumps.h"
#include "platform/qt/services/end_of_session.h"
#include "platform/qt/services/qt_platform.h"
#include "platform/qt/services/running_instance.h"
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

/// Returns the exit status of a start while another one runs on the same settings.
int leaveToTheOther(Command command, const QVariantMap& notes) {
  if (command == Command::Start || command == Command::Hide || RunningInstance::tell(command, notes)) {
    return EXIT_SUCCESS;
  }
  complain("it runs already and could not be told");
  return EXIT_FAILURE;
}

int runOnDesktop(Command command, const MailReader& reader, int& argc, char** argv) {
  const QVariantMap notes = startUpNotes();
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  QtPlatform platform(reader);
  // Before there is anything that could be saved when the wait for the other one is ended.
  if (!platform.isOnlyInstance()) return leaveToTheOther(command, notes);
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
  if (!Main(program, command) || platform.isQuitting()) return EXIT_SUCCESS;
  endStartUpNotice(notes);  // which the library does where a window comes up, but not in the tray
  const RunningInstance instance([&program](Command asked) { CarryOut(program, asked); });
  QtPlatform::provideSounds();
  // Once the event loop runs: what ends the program also ends the box then.
  QTimer::singleShot(0, &view, [&platform] { warnOfSettings(platform); });
  if (command != Command::Show) QTimer::singleShot(0, &view, [&program, command] { CarryOut(program, command); });
  return QApplication::exec();
}

}  // namespace

int main(int argc, char* argv[]) {
  forbidCoreDumps();
  QCoreApplication::setApplicationName("Velmora");
  QCoreApplication::setOrganizationName("Kestrum");
  QGuiApplication::setDesktopFileName("Velmora");
  const std::vector<std::string_view> words(argv + 1, argv + argc);
  const auto command = commandOf(words);
  if (!command) {
    complain(notUnderstood(words));
    return exitMisused;
  }
  const GmimeReader reader;
  const bool needsDesktop = *command < Command::Check;
  return needsDesktop ? runOnDesktop(*command, reader, argc, argv) : answerOnConsole(*command, reader, argc, argv);
}
