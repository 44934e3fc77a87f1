#pragma once

#include <cstdint>

namespace velmora {

struct Program;

/// Whether the user is asked before something is deleted.
enum class Confirmation { AsTheOptionSays, Never };

/// Deletes messages on an account's server, after a question where it is wanted: those that are marked as spam
/// with `ruleMarked`, otherwise those whose rows are selected in the list. A message is known by its identifier alone,
/// and leaves the store once the server has confirmed the end of the connection. A failure is shown and changes
/// nothing. The caller has suspended Auto Check and disabled the interface, and shows the account again afterwards.
void DeleteMessages(Program& program, std::int16_t account, bool ruleMarked,
                    Confirmation confirmation = Confirmation::AsTheOptionSays);

/// Deletes the selected messages of the account showing, and shows what is left. The caller has suspended Auto Check.
void DeleteSelection(Program& program);

/// The list's command: the same, while Auto Check waits.
void DeleteSelectedMessages(Program& program);

/// Deletes what is marked as spam, account by account, each with a question of its own. Shows each account while it is
/// at it, and the one that was showing again in the end. Auto Check waits meanwhile.
void DeleteSpamMessages(Program& program);

}  // namespace velmora
