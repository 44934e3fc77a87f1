#pragma once

#include <chrono>
#include <cstdio>
#include <string>

#include "options/decisions/options.h"
#include "platform/date_time.h"

namespace velmora::test {

/// The rules of Auto Check once more, as plainly as they can be said: a clock of seconds since an epoch, moments turned
/// into texts, texts compared.
class PlainSchedule {
 public:
  using Seconds = std::chrono::local_seconds;

  explicit PlainSchedule(const Options& options) : options_(options) {}

  void next(Seconds now, int extraMinutes) {
    const auto today = std::chrono::floor<std::chrono::days>(now);
    const auto minute = std::chrono::floor<std::chrono::minutes>(now - today).count() + options_.Hours * 60 +
                        options_.Minutes + extraMinutes;
    const auto day = minute < 24 * 60 ? today : today + std::chrono::days(1);
    const std::string candidate = text(day, minute % (24 * 60));
    const bool wasPostponed = postponed;
    time = candidate;
    shown = minute % (24 * 60);
    if (options_.NoCheck != 1) return;
    postponed = false;
    const auto begin = minutes(options_.NoCheckTimeBegin);
    const auto end = minutes(options_.NoCheckTimeEnd);
    const std::string beginText = text(day, begin);
    std::string endText = text(day, end);
    if (beginText > endText) endText = text(today + std::chrono::days(1), end);
    const bool outside = candidate > endText || candidate < beginText || beginText == endText;
    if (outside || wasPostponed) return;
    time = endText;
    shown = end;
    postponed = true;
  }

  bool due(Seconds now) {
    const auto minute = std::chrono::floor<std::chrono::minutes>(now);
    if (minute != minute_) {
      const auto today = std::chrono::floor<std::chrono::days>(now);
      clock_ = text(today, (minute - today).count());
      minute_ = minute;
    }
    return time <= clock_;
  }

  /// "Auto Check at 4:05 PM"
  std::string says() const {
    const long hour = shown / 60;
    return format("Auto Check at %ld:%02ld ", hour % 12 == 0 ? 12 : hour % 12, shown % 60) + (hour < 12 ? "AM" : "PM");
  }

  std::string time;
  bool postponed = false;

 private:
  template <class... Numbers>
  static std::string format(const char* pattern, Numbers... numbers) {
    char text[40];
    std::snprintf(text, sizeof text, pattern, static_cast<long>(numbers)...);
    return text;
  }

  static std::string text(std::chrono::local_days day, long minute) {
    const std::chrono::year_month_day date(day);
    return format("%02ld/%02ld/%02ld-", static_cast<unsigned>(date.day()), static_cast<unsigned>(date.month()),
                  static_cast<int>(date.year()) % 100) +
           format("%02ld:%02ld", minute / 60, minute % 60);
  }

  static long minutes(const std::string& time) { return std::stol(time.substr(0, 2)) * 60 + std::stol(time.substr(3)); }

  const Options& options_;
  long shown = 0;
  std::chrono::local_time<std::chrono::minutes> minute_{};
  std::string clock_;  ///< the text of that minute
};

}  // namespace velmora::test
