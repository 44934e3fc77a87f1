#pragma once

namespace velmora {

struct Program;

/// Tries the connection of the account showing on the Accounts page, as it was last saved, and tells how that went.
void TestCurrentAccount(Program& program);

}  // namespace velmora
