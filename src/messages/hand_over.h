#pragma once

#include <string>

namespace velmora {

struct MailDraft;
struct Program;

/// Opens a file or an address with the program that the desktop has for it; says so where there is none.
void OpenOutside(Program& program, const std::string& target);

/// Has the desktop open the selected message, which is laid into a file for that; says so where that can't be done.
void OpenMessage(Program& program);

/// Begins an answer to the selected message in the user's mail program.
void ReplyToMessage(Program& program);

/// Begins a new message there.
void NewMessage(Program& program);

/// Has the user's mail program show a message to be written on, which nobody sends but the user. It is the default
/// email client, or else that of the account showing, or else what the desktop has for it.
void ComposeThroughMail(Program& program, const MailDraft& draft);

/// Writes the selected message into a file, whether that succeeds or not.
void WriteMessageFile(Program& program, const std::string& path);

/// Removes what was laid into the temporary folder for other programs.
void DeleteTemporaryFiles(Program& program);

}  // namespace velmora
