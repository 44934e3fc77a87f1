#pragma once

namespace velmora {

struct Program;

/// Makes the working copy of the account showing its record, and keeps it. A name that is blank or another account's
/// is refused with a message; nothing is saved then. Rules that hold for the account follow its new name.
void SaveAccount(Program& program);

/// Creates an account behind the others, keeps it and shows it on the page.
void AddAccount(Program& program);

}  // namespace velmora
