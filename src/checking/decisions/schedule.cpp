#include "checking/decisions/schedule.h"

#include "platform/text.h"

namespace velmora {

namespace {

constexpr int minutesOfDay = 24 * 60;

/// Minutes since midnight of "hh:mm".
std::optional<int> minutesOf(std::string_view time) {
  const auto hours = text::toNumber(time.substr(0, 2));
  const auto minutes = time.size() == 5 && time[2] == ':' ? text::toNumber(time.substr(3)) : std::nullopt;
  const bool known = hours && minutes && *hours >= 0 && *hours < 24 && *minutes >= 0 && *minutes < 60;
  return known ? std::optional(static_cast<int>(*hours * 60 + *minutes)) : std::nullopt;
}

DateTime at(DateTime day, int minutes) {
  day.hour = minutes / 60;
  day.minute = minutes % 60;
  return day;
}

std::string nextCheckText(const DateTime& moment) { return "Auto Check at " + formatDateTime(moment, "h:mm AM/PM"); }

NextCheck nextAt(const DateTime& moment) { return {nextCheckText(moment), checkTime(moment)}; }

/// The text by which a time is compared: as it stands, or with the year first, so that texts stand in the order of
/// their moments.
std::string comparable(const Options& options, const std::string& time) {
  constexpr std::size_t dateSize = 8;
  if (options.KeepInterval != 1 || time.size() < dateSize) return time;
  return time.substr(6, 2) + time.substr(3, 2) + time.substr(0, 2) + time.substr(dateSize);
}

std::string comparable(const Options& options, const DateTime& moment) {
  return comparable(options, checkTime(moment));
}

/// The quiet period as it is compared with checks of one day.
struct QuietPeriod {
  std::string begin;
  DateTime endMoment;
  std::string end;
};

std::optional<QuietPeriod> quietPeriod(const Options& options, const DateTime& day, const DateTime& tomorrow) {
  const auto begin = minutesOf(options.NoCheckTimeBegin);
  const auto end = minutesOf(options.NoCheckTimeEnd);
  if (options.NoCheck != 1 || !begin || !end) return std::nullopt;
  QuietPeriod period{comparable(options, at(day, *begin)), at(day, *end), comparable(options, at(day, *end))};
  if (period.begin > period.end) {  // it passes midnight
    period.endMoment = at(tomorrow, *end);
    period.end = comparable(options, period.endMoment);
  }
  return period;
}

/// Around midnight it is told of one day alone.
bool isWithinAMinute(const DateTime& former, const DateTime& now) {
  constexpr int minute = 60;
  const auto seconds = [](const DateTime& moment) {
    return (moment.hour * minute + moment.minute) * minute + moment.second;
  };
  const int passed = seconds(now) - seconds(former);
  const bool sameDay = former.year == now.year && former.month == now.month && former.day == now.day;
  return sameDay && passed >= 0 && passed < minute;
}

bool isOutside(const std::string& time, const QuietPeriod& period) {
  return time > period.end || time < period.begin || period.begin == period.end;
}

}  // namespace

NextCheck nextAutoCheck(const Options& options, const DateTime& now, int extraMinutes, bool postponed) {
  const int minutes = now.hour * 60 + now.minute + options.IntervalMinutes() + extraMinutes;
  const bool today = minutes >= 0 && minutes < minutesOfDay;
  const DateTime tomorrow = nextDay(now);
  // Only a settings file that was changed by hand has an interval beyond a day, or below nothing.
  const DateTime moment = at(today ? now : tomorrow, (minutes % minutesOfDay + minutesOfDay) % minutesOfDay);
  NextCheck plain = nextAt(moment);
  const auto period = quietPeriod(options, moment, tomorrow);
  if (!period) return {plain.NextCheckText, plain.NextCheckTime, postponed};
  if (isOutside(comparable(options, moment), *period) || postponed) return plain;
  return {nextCheckText(period->endMoment), checkTime(period->endMoment), true};
}

std::string checkTime(const DateTime& moment) { return formatDateTime(moment, "dd/mm/yy-hh:mm"); }

/// A time that is further off than an interval and a quiet period was worked out by a clock that went wrong.
bool isDue(const Options& options, const std::string& nextCheckTime, const DateTime& now) {
  const std::string next = comparable(options, nextCheckTime);
  return next <= comparable(options, now) ||
         (options.KeepInterval == 1 && next > comparable(options, nextDay(nextDay(now))));
}

bool isQuiet(const Options& options, const DateTime& now) {
  const auto begin = minutesOf(options.NoCheckTimeBegin);
  const auto end = minutesOf(options.NoCheckTimeEnd);
  if (options.NoCheck != 1 || !begin || !end) return false;
  const int minute = now.hour * 60 + now.minute;
  return *begin <= *end ? *begin <= minute && minute < *end : *begin <= minute || minute < *end;
}

bool mayComeEarly(const Options& options, const std::optional<DateTime>& former, const DateTime& now) {
  return !isQuiet(options, now) && !(former && isWithinAMinute(*former, now));
}

int extraMinutesAtStart(const Options& options, const DateTime& now) {
  constexpr int shortInterval = 16;
  constexpr int wellBegun = 19;
  return options.IntervalMinutes() < shortInterval && now.second > wellBegun ? 1 : 0;
}

std::string countdownText(int seconds) { return "StartUp Check: " + std::to_string(seconds) + " sec"; }

}  // namespace velmora
