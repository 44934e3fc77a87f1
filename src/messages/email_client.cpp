#include "messages/email_client.h"

#include "app/program.h"
#include "messages/decisions/client_texts.h"
#include "platform/usable_file.h"

namespace velmora {

namespace {

constexpr std::int16_t normalWindow = 1;

}  // namespace

void StartClient(Program& program, const std::string& path, std::int16_t windowState) {
  if (!isUsableFile(program.platform, path, ".exe")) {
    program.platform.MsgBox(clientError(program.AppTitle));
  } else if (!program.platform.startProgram(path, windowState, {})) {
    program.platform.MsgBox(clientNotStarted(program.AppTitle, path));
  }
}

void StartClientFor(Program& program, const Account& account) {
  const Options& options = program.options;
  if (isUsableFile(program.platform, options.DefaultClient, ".exe")) {
    StartClient(program, options.DefaultClient, options.RunSize);
  } else {
    StartClient(program, account.AcntClient, normalWindow);
  }
}

void StartClientProgram(Program& program) { StartClientFor(program, program.accounts[program.accounts.AcntCurrent]); }

void OpenOutside(Program& program, const std::string& target) {
  if (!program.platform.open(target)) program.platform.MsgBox(nothingOpens(program.AppTitle, target));
}

void NewMessage(Program& program) { OpenOutside(program, "mailto:"); }

void DeleteTemporaryFiles(Program& program) {
  for (const auto* name : {"temporary.eml", "temporary.msg"}) program.platform.deleteTemporaryFile(name);
}

}  // namespace velmora
