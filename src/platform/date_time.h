#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// A moment in the user's local time. Months and days count from 1, hours from 0 to 23.
struct DateTime {
  int year = 1970;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;

  auto operator<=>(const DateTime&) const = default;
};

/// The user's names of the months, January first, and of the days of the week, Sunday first.
struct DateNames {
  std::array<std::string, 12> abbreviated = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::array<std::string, 12> full = {"January", "February", "March",     "April",   "May",      "June",
                                      "July",    "August",   "September", "October", "November", "December"};
  std::array<std::string, 7> weekdays = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
};

/// Writes a moment by a pattern of these tokens, in either case: d dd day, dddd weekday, m mm mmm mmmm month, yy yyyy
/// year, h hh hour (of twelve where the pattern holds AM/PM), mm minutes where an hour stands before it, ss seconds,
/// AM/PM. All else is copied.
std::string formatDateTime(const DateTime& moment, std::string_view pattern, const DateNames& months = {});

/// The general date: "12/25/2026 9:34:56 PM", without the time at midnight.
std::string generalDate(const DateTime& moment);

/// Reads a general date, or the beginning of one: the time or its seconds may be missing, and of AM and PM the first
/// letter is enough. Nothing where the text is no date.
std::optional<DateTime> parseGeneralDate(std::string_view text);

/// Reads "15/11/26 16:21": day, month and year of this century, then hour and minute. Nothing where it is no date.
std::optional<DateTime> parseDayFirst(std::string_view text);

/// Reads "Nov 15, 2026 04:22:05 PM" with the user's names of the months. Nothing where the text is no such date.
std::optional<DateTime> parseDisplayDate(std::string_view text, const DateNames& names);

/// The same time of the day after.
DateTime nextDay(DateTime moment);

/// The moment exists: a 30 February, for instance, does not.
bool isValid(const DateTime& moment);

}  // namespace velmora
