#pragma once

namespace velmora {

struct Program;

enum class Saving { Done, NameRefused, NotKept };

/// Makes the working copy of the account showing its record, and keeps it. A name that is blank or another account's
/// is refused with a message, and a message tells where the account can't be kept; nothing is saved then, and the page
/// stays changed. Rules that hold for the account follow its new name.
Saving SaveAccount(Program& program);

/// Creates an account behind the others, keeps it and shows it on the page. Where it can't be kept, a message tells so,
/// and there is none.
void AddAccount(Program& program);

}  // namespace velmora
