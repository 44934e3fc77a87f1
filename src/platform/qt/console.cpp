#include "platform/qt/console.h"

#include <QCoreApplication>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

#include "checking/command_check.h"
#include "platform/pop/pop_client.h"
#include "platform/qt/services/local_time.h"
#include "platform/qt/services/qt_keyring.h"
#include "platform/qt/services/qt_settings.h"
#include "platform/qt/services/qt_transport.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/harmless_text.h"

namespace velmora {

namespace {

std::string oneLine(std::string_view line) {
  return utf8(harmlessLine(line, static_cast<qsizetype>(line.size()))) + '\n';
}

/// Nothing is saved, as another Velmora may be running on these settings.
int check(const MailReader& reader, int& argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QtSettings settings;
  if (!settings.isKept()) {
    const QString file = settings.openFile() ? *settings.openFile() : QtSettings::fileName();
    complain("the settings cannot be used: " + utf8(file));
    return static_cast<int>(CheckStatus::Failure);
  }
  ServerHabits habits;
  const auto client = std::make_shared<PopClient>(PopClient::Surroundings{makeQtTransport, reader, localTime, habits});
  // Whoever reads gets each line when it is known.
  const CheckLines lines{[](const std::string& line) { std::cout << oneLine(line) << std::flush; }, complain};
  QtKeyring keyring;
  const CheckStatus status = CheckFromCommandLine(settings, keyring, *client, lines);
  return static_cast<int>(std::cout ? status : CheckStatus::Failure);
}

int print(const std::string& text) {
  std::cout << text << std::flush;
  return std::cout ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

void complain(std::string_view line) { std::cerr << oneLine("Velmora: " + std::string(line)); }

int answerOnConsole(Command command, const MailReader& reader, int& argc, char** argv) {
  switch (command) {
    case Command::Check:
      return check(reader, argc, argv);
    case Command::Version:
      return print(versionText());
    default:
      return print(commandHelp());
  }
}

}  // namespace velmora
