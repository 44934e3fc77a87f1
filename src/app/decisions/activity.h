#pragma once

namespace velmora {

/// What the program is doing. Whoever would start something else, or touch what it works on, asks for this first.
enum class Activity {
  Idle,      ///< it waits for the user and the clock
  Checking,  ///< a walk over the accounts, or the check of one
  Testing,   ///< a connection test: it stays on its page
  Deleting,  ///< on a server
  Fetching,  ///< one message as its server has it
  Keeping,   ///< passwords are on their way into the desktop's keyring, or out of it
  Ending,    ///< the client is gone, and nothing begins any more
};

}  // namespace velmora
