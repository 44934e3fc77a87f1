#pragma once

#include "checking/auto_check.h"

namespace velmora {

struct Program;

/// The countdown to the check at start-up.
struct StartUpCountdown {
  bool StartUpDone = true;         ///< the check has happened, or never will
  bool StartUpPaused = false;      ///< the countdown stands
  bool StartUpHeld = false;        ///< by SuspendStartUpTimer
  int StartUpHolds = 0;            ///< how often it was called for
  bool StartUpWasRunning = false;  ///< what SuspendStartUpTimer has to restore
  int StartUpSeconds = 0;          ///< gone by
  bool StartUpWaits = false;       ///< for the network, all seconds having gone by
  int StartUpSecondsLeft = 0;      ///< until it does, once the network is back
};

/// Begins to count the seconds to the check at start-up, where the user wants one and there are accounts.
void BeginStartUpCountdown(Program& program);

/// A second of it has passed; the last one brings the check.
void tmrMailStartUp_Timer(Program& program);

/// Gives the check at start-up up, since another one comes before it. Nothing once it has happened.
void EndStartUpCountdown(Program& program);

/// Stops the countdown, or lets it go on from where it stands.
void ToggleStartUpPause(Program& program);

/// For dialogs that the check must not overtake, one over another as it may be. A countdown that the user has stopped
/// stays so.
void SuspendStartUpTimer(Program& program, TimerAction action);

}  // namespace velmora
