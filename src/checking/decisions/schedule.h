#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "options/decisions/options.h"
#include "platform/date_time.h"

namespace velmora {

inline constexpr const char* autoCheckOff = "Auto Check Off";

/// When the next timed check happens.
struct NextCheck {
  std::string NextCheckText;      ///< "Auto Check at 4:05 PM"
  std::string NextCheckTime;      ///< "15/11/26-16:05"
  bool NoCheckPostponed = false;  ///< the time is the end of the quiet period

  bool operator==(const NextCheck&) const = default;
};

/// One interval and `extraMinutes` after `now`, or at the end of the quiet period that this falls into, unless the
/// check before it was put off so (`postponed`). All are times of the wall clock and compared as texts, with the day
/// first, unless KeepInterval has their moments compared. Of a quiet period that passes midnight only the evening
/// counts, and one with a time that can't be read is none.
NextCheck nextAutoCheck(const Options& options, const DateTime& now, int extraMinutes, bool postponed);

/// A moment as next check times are written.
std::string checkTime(const DateTime& moment);

/// The time has come. Across the end of a month the texts don't stand in the order of the moments: a check of next
/// month comes at once, unless KeepInterval has the moments compared.
bool isDue(const Options& options, const std::string& nextCheckTime, const DateTime& now);

/// The quiet period is on, which holds until the morning here where it passes midnight.
bool isQuiet(const Options& options, const DateTime& now);

/// A check may come before its time: not in the quiet period, which here holds from the evening to the morning where it
/// passes midnight, and not within a minute of the one that came so before it.
bool mayComeEarly(const Options& options, const std::optional<DateTime>& former, const DateTime& now);

/// The first interval, if it is a short one, counts from the next full minute when the present one is well begun.
int extraMinutesAtStart(const Options& options, const DateTime& now);

/// What the fourth status panel says while the next timed check, or that at start-up, waits for the network.
inline constexpr const char* autoCheckWaits = "Auto Check: Offline";
inline constexpr const char* startUpCheckWaits = "StartUp Check: Offline";

/// What the third status panel says while the check at start-up waits.
std::string countdownText(int seconds);

}  // namespace velmora
