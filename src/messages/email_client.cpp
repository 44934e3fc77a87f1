#include "messages/email_client.h"

#include "app/program.h"
#include "messages/decisions/client_texts.h"

namespace velmora {

namespace {

constexpr std::int16_t normalWindow = 1;

bool startClient(Program& program) {
  if (program.DefaultClientValid) {
    return program.platform.startProgram(program.options.DefaultClient, program.options.RunSize);
  }
  const Accounts::Row& account = program.accounts[program.accounts.AcntCurrent];
  return account.AcntClientValid && program.platform.startProgram(account.AcntClient, normalWindow);
}

}  // namespace

void StartClientProgram(Program& program) {
  if (!startClient(program)) program.platform.MsgBox(clientError(program.AppTitle));
}

void OpenOutside(Program& program, const std::string& target) {
  if (!program.platform.open(target)) program.platform.MsgBox(nothingOpens(program.AppTitle, target));
}

void NewMessage(Program& program) { OpenOutside(program, "mailto:"); }

void DeleteTemporaryFiles(Program& program) {
  for (const auto* name : {"temporary.eml", "temporary.msg"}) program.platform.deleteTemporaryFile(name);
}

}  // namespace velmora
