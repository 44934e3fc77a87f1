#include "options/keep_settings.h"

#include "app/program.h"

namespace velmora {

bool KeepSettings(Program& program, std::string_view loss) {
  const auto reason = program.platform.settings().Keep();
  if (reason) TellNotSaved(program, loss, *reason);
  return !reason;
}

void TellNotSaved(Program& program, std::string_view loss, std::string_view reason) {
  const std::string text = std::string(loss) + "\r\n\r\n" + std::string(reason) + "\r\n";
  program.platform.MsgBox({text, program.AppTitle + " - Settings Error", Question::Icon::Critical});
}

}  // namespace velmora
