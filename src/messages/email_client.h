#pragma once

#include <cstdint>
#include <string>

namespace velmora {

struct Account;
struct Program;

/// A mail program that the user has chosen, and the state of the window that it is started in.
struct EmailClient {
  std::string path;
  std::int16_t windowState = 1;
  bool isThere = false;  ///< the path leads to one
};

/// The default email client as it is saved, or else that of an account, saved or not.
EmailClient clientFor(const Program& program, const Account& account);

/// One on the Options page, saved or not.
EmailClient clientAt(const Program& program, const std::string& path, std::int16_t windowState);

/// Starts a client, with an address as its argument unless that is blank; says so where there is none, or where it
/// can't be started.
void StartClient(Program& program, const EmailClient& client, const std::string& address = {});

/// Starts the email client of the account showing, all as it is saved.
void StartClientProgram(Program& program);

}  // namespace velmora
