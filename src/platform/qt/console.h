#pragma once

#include <string_view>

#include "app/decisions/command_line.h"
#include "platform/mail_reader.h"

namespace velmora {

/// The exit status of a call that could not be understood, or of one whose command failed.
inline constexpr int exitMisused = 2;

/// A line on standard error, in which nothing can disguise itself or steer a terminal.
void complain(std::string_view line);

/// Carries out a command that needs no desktop and returns the program's exit status: Check, Help or Version.
int answerOnConsole(Command command, const MailReader& reader, int& argc, char** argv);

}  // namespace velmora
