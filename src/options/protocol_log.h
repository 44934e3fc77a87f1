#pragma once

namespace velmora {

struct Program;

/// Ties the button that shows the log to what it does.
void ConnectProtocolLog(Program& program);

/// Begins or ends the protocol log, as the options in force say. Where it can't be begun the option goes off again, and
/// false is returned.
bool FollowProtocolLog(Program& program);

/// Says that it can't be begun.
void TellNoProtocolLog(Program& program);

}  // namespace velmora
