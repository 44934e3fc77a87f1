#include "messages/email_client.h"

#include "app/program.h"
#include "messages/decisions/client_texts.h"
#include "platform/usable_file.h"

namespace velmora {

namespace {

constexpr std::int16_t normalWindow = 1;

}  // namespace

EmailClient clientAt(const Program& program, const std::string& path, std::int16_t windowState) {
  return {path, windowState, isUsableFile(program.platform, path, ".exe")};
}

EmailClient clientFor(const Program& program, const Account& account) {
  EmailClient client = clientAt(program, program.options.DefaultClient, program.options.RunSize);
  return client.isThere ? client : clientAt(program, account.AcntClient, normalWindow);
}

void StartClient(Program& program, const EmailClient& client, const std::string& address) {
  if (!client.isThere) {
    program.platform.MsgBox(clientError(program.AppTitle));
  } else if (!program.platform.startProgram(client.path, client.windowState, address)) {
    program.platform.MsgBox(clientNotStarted(program.AppTitle, client.path));
  }
}

void StartClientProgram(Program& program) {
  StartClient(program, clientFor(program, program.accounts[program.accounts.AcntCurrent]));
}

}  // namespace velmora
