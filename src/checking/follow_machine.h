#pragma once

#include <optional>

#include "platform/date_time.h"

namespace velmora {

struct Program;

/// A network needs some seconds until names are found in it.
inline constexpr int secondsUntilCheck = 5;

/// What sleep and network make of the timed checks, where the user wants that.
struct MachineState {
  bool Watched = false;
  int SecondsLeft = 0;   ///< in which no timed check begins
  bool Brought = false;  ///< one comes when they are over, whether it is due or not
  bool PutOff = false;   ///< one waits for the network
  std::optional<DateTime> LastBrought;
};

/// Begins or ends to watch the machine, as the options in force say. With the choice for it off nothing is put off any
/// more.
void WatchMachine(Program& program);

/// The machine has woken, or has its network back: the next timed check comes some seconds later, and one that is due
/// waits for that.
void MachineIsBack(Program& program);

/// Asked once a second while a timed check may begin, and tells whether it shall. `due` says that its time has come.
bool MachineLetsCheck(Program& program, bool due);

/// The check at start-up has to wait for the network.
bool waitsForNetwork(const Program& program);

/// A check begins, or none is timed any more: nothing is put off or brought forward.
void ForgetPutOffCheck(Program& program);

}  // namespace velmora
