#include "messages/save_original.h"

#include <algorithm>
#include <optional>

#include "app/program.h"
#include "checking/fetch_original.h"
#include "messages/decisions/message_file.h"
#include "messages/decisions/original_texts.h"
#include "messages/message_list.h"

namespace velmora {

namespace {

/// A message on a server, by what it can be told by there. The list may change while a dialog is open.
struct Original {
  std::int16_t account = 0;
  std::string identifier;
};

void tell(Program& program, OriginalTrouble trouble) {
  if (program.activity != Activity::Ending) program.platform.MsgBox(originalNotSaved(program.AppTitle, trouble));
}

/// Nothing where there is none that could be fetched, which the user is told.
std::optional<Original> selectedOriginal(Program& program) {
  const MailMessage* message = selectedMail(program);
  if (message == nullptr || program.activity != Activity::Idle) return std::nullopt;
  if (message->MsgID.empty()) {
    tell(program, OriginalTrouble::NoIdentifier);
    return std::nullopt;
  }
  return Original{program.accounts.AcntCurrent, message->MsgID};
}

/// Where the user wants the file, nothing where he doesn't.
std::optional<std::string> askForPlace(Program& program, const FileQuestion& question) {
  const HoldTimers hold(program);
  auto path = program.platform.askForFile(question);
  if (!path || program.activity == Activity::Idle) return path;
  tell(program, OriginalTrouble::Busy);  // the tray can be used beneath a dialog
  return std::nullopt;
}

std::size_t chosenPlace(const ComboBox& box) {
  const auto& list = box.List.get();
  return static_cast<std::size_t>(std::find(list.begin(), list.end(), box.Text.get()) - list.begin());
}

/// Fetches the message for a taker who notes what was the matter where he didn't keep it, and tells the user what went
/// wrong.
void fetch(Program& program, const Original& original, const OriginalTaker& taker, const OriginalTrouble& notKept) {
  switch (FetchOriginal(program, original.account, original.identifier, taker)) {
    case FetchOutcome::Gone:
      return tell(program, OriginalTrouble::Gone);
    case FetchOutcome::NotUnique:
      return tell(program, OriginalTrouble::NotUnique);
    case FetchOutcome::NotKept:
      return tell(program, notKept);
    case FetchOutcome::Fetched:
    case FetchOutcome::Stopped:
    case FetchOutcome::Failed:
      return;
  }
}

void saveTo(Program& program, const Original& original, const std::string& path) {
  const auto draft = program.platform.startFile(path);
  if (!draft) return tell(program, OriginalTrouble::NotWritten);
  const auto take = [&draft](std::string_view bytes) { return draft->write(bytes); };
  fetch(program, original, {take, [&draft] { return draft->keep(); }}, OriginalTrouble::NotWritten);
}

/// The attachment stands at the same place in the message that comes in as it stood in the one that was listed: they
/// are the same bytes.
void saveAttachmentTo(Program& program, const Original& original, std::size_t place, const std::string& path) {
  std::string message;
  OriginalTrouble trouble = OriginalTrouble::TooLong;
  const auto take = [&message](std::string_view bytes) {
    message += bytes;
    return message.size() <= longestWithAttachment;
  };
  const auto keep = [&] {
    const auto content = program.platform.attachmentOf(message, place);
    trouble = content ? OriginalTrouble::NotWritten : OriginalTrouble::NoAttachment;
    return content && !program.connection.StopRequested && program.platform.writeFile(path, *content);
  };
  fetch(program, original, {take, keep}, trouble);
}

}  // namespace

void SaveOriginal(Program& program) {
  const auto original = selectedOriginal(program);
  if (!original) return;
  const auto path = askForPlace(program, originalQuestion(selectedMail(program)->Subject));
  if (path) saveTo(program, *original, *path);
}

void SaveAttachment(Program& program) {
  const auto original = selectedOriginal(program);
  if (!original) return;
  const std::size_t place = chosenPlace(program.frmPreview.cboAttachments);
  const auto& attached = selectedMail(program)->Attached;
  if (place >= attached.size()) return;
  const auto path = askForPlace(program, attachmentQuestion(attached[place]));
  if (path) saveAttachmentTo(program, *original, place, *path);
}

}  // namespace velmora
