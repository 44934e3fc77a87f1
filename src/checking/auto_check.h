#pragma once

#include <string>

namespace velmora {

struct Program;

/// When the next timed check comes.
struct AutoCheckTimes {
  std::string CurrentTime;  ///< "dd/mm/yy-hh:mm", as of the last tick of tmrMailTime
  std::string NextCheckText;
  std::string NextCheckTime;       ///< in the form of CurrentTime
  std::string SavedNextCheckText;  ///< for when Auto Check is switched on again, as is the next one
  std::string SavedNextCheckTime;
  bool NoCheckPostponed = false;  ///< the next one was put off to the end of the quiet period
};

enum class TimerAction { Suspend, Restore };

/// Works out when the next timed check happens, and keeps a copy. The check before it may have been put off to the end
/// of the quiet period.
void NextAutoCheck(Program& program, int extraMinutes, bool postponed);

/// A second has passed with Auto Check on: the clock, the check that may be due, the tray.
void tmrMailTime_Timer(Program& program);

/// A second has passed with Auto Check off or suspended: the clock and the tray.
void tmrStatusBar_Timer(Program& program);

/// Holds the Auto Check timer off, or starts it again; the clock goes on. Does nothing while Auto Check is off. The
/// two don't nest.
void SuspendAutoCheck(Program& program, TimerAction action);

/// What a window that held the timer off does when it closes: while a check or a deletion is under way, that one will
/// start the timer again.
void LetAutoCheckGoOn(Program& program);

/// Starts the timer that belongs to the Auto Check option, stops the other one, and tells in the fourth panel and in
/// the tray's menu.
void ChooseRunningTimer(Program& program);

}  // namespace velmora
