#include "messages/hand_over.h"

#include <array>

#include "app/program.h"
#include "messages/decisions/client_texts.h"
#include "messages/decisions/mailto.h"
#include "messages/decisions/message_file.h"
#include "messages/decisions/reply_draft.h"
#include "messages/email_client.h"
#include "options/decisions/maker.h"

namespace velmora {

namespace {

/// Not every mail program takes the first.
constexpr std::array temporaryNames = {"temporary.eml", "temporary.msg"};

bool openAs(Program& program, const char* name) {
  const std::string path = program.platform.temporaryFile(name);
  WriteMessageFile(program, path);
  return program.platform.open(path);
}

/// What the user cancelled there is not tried elsewhere.
void followPortal(Program& program, PortalAnswer answer, const std::string& address) {
  if (answer == PortalAnswer::NotThere) OpenOutside(program, address);
}

}  // namespace

void OpenOutside(Program& program, const std::string& target) {
  if (!program.platform.open(target)) program.platform.MsgBox(nothingOpens(program.AppTitle, target));
}

void OpenMessage(Program& program) {
  if (selectedMail(program) == nullptr) return;
  for (const char* name : temporaryNames) {
    if (openAs(program, name)) return;
  }
  program.platform.MsgBox(openFailed(program.AppTitle, supportAddress));
}

void ReplyToMessage(Program& program) {
  if (const MailMessage* message = selectedMail(program)) {
    ComposeThroughMail(program, replyDraft(*message, program.platform.dateNames()));
  }
}

void NewMessage(Program& program) { ComposeThroughMail(program, {}); }

void ComposeThroughMail(Program& program, const MailDraft& draft) {
  const MailDraft handed = handedOn(draft);
  const std::string address = mailtoAddress(handed);
  const EmailClient client = clientFor(program, program.accounts[program.accounts.AcntCurrent]);
  if (client.isThere) return StartClient(program, client, address);
  program.platform.composeThroughPortal(
      handed, [&program, address](PortalAnswer answer) { followPortal(program, answer, address); });
}

void WriteMessageFile(Program& program, const std::string& path) {
  if (const MailMessage* message = selectedMail(program)) {
    program.platform.writeFile(path, messageFileText(*message));
  }
}

void DeleteTemporaryFiles(Program& program) {
  for (const char* name : temporaryNames) program.platform.deleteTemporaryFile(name);
}

}  // namespace velmora
