#pragma once

namespace velmora {

struct Program;

/// Has the choice of the working copy of the options, whether the desktop's keyring holds the passwords, take effect
/// and keeps it: moves the passwords of all accounts, or of none. Wherever the program is killed meanwhile, each
/// password can be had afterwards. Where that can't be done a message tells why, and the choice is what it was. Does
/// nothing where the choice is in force.
void FollowKeyringChoice(Program& program);

}  // namespace velmora
