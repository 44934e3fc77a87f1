#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace velmora {

struct Program;

/// What became of a message that was to be fetched as the server has it.
enum class FetchOutcome {
  Fetched,
  Gone,       ///< the server has no message with this identifier any more
  NotUnique,  ///< it has several
  NotKept,    ///< by its taker
  Stopped,    ///< by the user
  Failed,     ///< which the user has been told
};

/// Who gets a message. What he throws is told to the user.
struct OriginalTaker {
  std::function<bool(std::string_view bytes)> take;  ///< the next bytes; false: he wants no more
  std::function<bool()> keep;                        ///< all has come; false: he could make nothing of it
};

/// The message of an account that bears this identifier, exactly as its server has it, handed out piece by piece.
/// Unless the outcome is Fetched, what was handed out is of no use. A small window tells how far it has come, and ends
/// it. Only where nothing else is under way.
FetchOutcome FetchOriginal(Program& program, std::int16_t account, const std::string& identifier,
                           const OriginalTaker& taker);

/// Sets the handlers of that window.
void ConnectFetchOriginal(Program& program);

/// Tells there how much has come.
void ShowOriginalProgress(Program& program, std::int32_t position, std::int32_t total);

}  // namespace velmora
