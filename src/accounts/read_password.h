#pragma once

#include <cstdint>
#include <string>

namespace velmora {

class Keyring;
struct Account;
struct Program;

/// The password of an account, out of memory or, where the desktop's keyring holds it, from there, which blocks while
/// the event loop turns. Where the keyring doesn't give it the user is asked, but not by a check that comes by itself.
/// Throws pop_failure::passwordOutOfReach.
std::string PasswordOf(Program& program, std::int16_t account);

/// Likewise, where there is neither a program nor anybody to be asked.
std::string passwordOf(Keyring& keyring, const Account& account);

}  // namespace velmora
