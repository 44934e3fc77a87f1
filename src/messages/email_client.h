#pragma once

#include <cstdint>
#include <string>

namespace velmora {

struct Account;
struct Program;

/// Starts the email client that a path leads to, in a window of this state; says so where there is none, or where it
/// can't be started.
void StartClient(Program& program, const std::string& path, std::int16_t windowState);

/// Starts the default email client as it is saved, or else that of an account, saved or not.
void StartClientFor(Program& program, const Account& account);

/// Starts the email client of the account showing, all as it is saved.
void StartClientProgram(Program& program);

/// Opens a file or an address with the program that the desktop has for it; says so where there is none.
void OpenOutside(Program& program, const std::string& target);

/// Begins a new message in the desktop's email client.
void NewMessage(Program& program);

/// Removes what was laid into the temporary folder for other programs.
void DeleteTemporaryFiles(Program& program);

}  // namespace velmora
