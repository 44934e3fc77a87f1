#include "messages/email_client.h"

#include "app/program.h"
#include "messages/decisions/client_texts.h"
#include "platform/usable_file.h"

namespace velmora {

namespace {

/// What is saved counts here, whatever the pages show.
bool startClientInForce(Program& program) {
  const Options& options = program.options;
  if (isUsableFile(program.platform, options.DefaultClient, ".exe")) {
    return StartClient(program, options.DefaultClient, options.RunSize);
  }
  return StartClient(program, program.accounts[program.accounts.AcntCurrent].AcntClient, normalWindow);
}

}  // namespace

bool StartClient(Program& program, const std::string& path, std::int16_t windowState) {
  return isUsableFile(program.platform, path, ".exe") && program.platform.startProgram(path, windowState);
}

void StartClientProgram(Program& program) {
  if (!startClientInForce(program)) program.platform.MsgBox(clientError(program.AppTitle));
}

void OpenOutside(Program& program, const std::string& target) {
  if (!program.platform.open(target)) program.platform.MsgBox(nothingOpens(program.AppTitle, target));
}

void NewMessage(Program& program) { OpenOutside(program, "mailto:"); }

void DeleteTemporaryFiles(Program& program) {
  for (const auto* name : {"temporary.eml", "temporary.msg"}) program.platform.deleteTemporaryFile(name);
}

}  // namespace velmora
