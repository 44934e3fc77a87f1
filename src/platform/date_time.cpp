#include "platform/date_time.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <utility>

#include "platform/ascii.h"
#include "platform/text.h"

namespace velmora {

namespace {

/// Appends a number with at least so many digits.
void appendDigits(std::string& text, int value, std::size_t width) {
  std::array<char, 12> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  const auto count = static_cast<std::size_t>(end - digits.data());
  if (count < width) text.append(width - count, '0');
  text.append(digits.data(), count);
}

/// The token that `pattern` begins with: a run of one letter, "AM/PM", or a single other character.
std::string_view nextToken(std::string_view pattern) {
  if (text::equalsIgnoringCase(pattern.substr(0, 5), "AM/PM")) return pattern.substr(0, 5);
  const auto end = pattern.find_first_not_of(pattern.front());
  return pattern.substr(0, end);
}

char letterOf(std::string_view token) { return ascii::lower(token.front()); }

void appendMonth(std::string& text, const DateTime& moment, std::size_t width, const DateNames& names) {
  const auto index = static_cast<std::size_t>(std::clamp(moment.month, 1, 12) - 1);
  if (width >= 3) {
    text += width == 3 ? names.abbreviated[index] : names.full[index];
  } else {
    appendDigits(text, moment.month, width);
  }
}

void appendDay(std::string& text, const DateTime& moment, std::size_t width, const DateNames& names) {
  if (width < 3) return appendDigits(text, moment.day, width);
  using namespace std::chrono;
  const year_month_day date{year(moment.year), month(static_cast<unsigned>(moment.month)),
                            day(static_cast<unsigned>(moment.day))};
  text += names.weekdays.at(weekday(sys_days(date)).c_encoding());
}

int hourOfTwelve(int hour) { return hour % 12 == 0 ? 12 : hour % 12; }

class PatternWriter {
 public:
  PatternWriter(const DateTime& moment, bool ofTwelve, const DateNames& names)
      : moment_(moment), ofTwelve_(ofTwelve), names_(names) {}

  void append(std::string& text, std::string_view token) {
    if (token.size() == 5 && token[2] == '/') {
      text += moment_.hour < 12 ? "AM" : "PM";
      return;
    }
    const bool minutes = std::exchange(afterHour_, afterHour_ && token == ":");
    switch (letterOf(token)) {
      case 'd':
        return appendDay(text, moment_, token.size(), names_);
      case 'm':
        return minutes ? appendDigits(text, moment_.minute, token.size())
                       : appendMonth(text, moment_, token.size(), names_);
      case 'y':
        return token.size() > 2 ? appendDigits(text, moment_.year, 4) : appendDigits(text, moment_.year % 100, 2);
      case 'h':
        afterHour_ = true;
        return appendDigits(text, ofTwelve_ ? hourOfTwelve(moment_.hour) : moment_.hour, token.size());
      case 's':
        return appendDigits(text, moment_.second, token.size());
      default:
        text += token;
    }
  }

 private:
  const DateTime& moment_;
  bool ofTwelve_;
  const DateNames& names_;
  bool afterHour_ = false;
};

/// Takes digits from the front of `text`; nothing where there are none or too many for any date.
std::optional<int> takeNumber(std::string_view& text) {
  int value = 0;
  const auto width = std::min(text.find_first_not_of("0123456789"), text.size());
  if (width == 0 || width > 4) return std::nullopt;
  std::from_chars(text.data(), text.data() + width, value);
  text.remove_prefix(width);
  return value;
}

bool take(std::string_view& text, char c) {
  if (!text.starts_with(c)) return false;
  text.remove_prefix(1);
  return true;
}

std::string_view skipBlanks(std::string_view text) {
  while (take(text, ' ')) continue;
  return text;
}

/// Three numbers with a slash between each two.
bool takeDate(std::string_view& text, int& a, int& b, int& c) {
  for (int* part : {&a, &b, &c}) {
    if (part != &a && !take(text, '/')) return false;
    const auto value = takeNumber(text);
    if (!value) return false;
    *part = *value;
  }
  return true;
}

/// Hour and minute, and seconds where there are any.
bool takeTime(std::string_view& text, DateTime& moment) {
  const auto hour = takeNumber(text);
  const auto minute = hour && take(text, ':') ? takeNumber(text) : std::nullopt;
  const auto second = minute && take(text, ':') ? takeNumber(text) : minute ? std::optional(0) : std::nullopt;
  if (!second) return false;
  moment.hour = *hour;
  moment.minute = *minute;
  moment.second = *second;
  return true;
}

/// Moves an hour of twelve to where the marker's first letter puts it. Without a marker the hour stands as it is.
void applyMarker(std::string_view marker, int& hour) {
  if (marker.empty() || hour > 12) return;
  const char letter = letterOf(marker);
  if (letter == 'p' && hour < 12) hour += 12;
  if (letter == 'a' && hour == 12) hour = 0;
}

int daysIn(int year, int month) {
  constexpr std::array<int, 12> days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  return month == 2 && leap ? 29 : days[static_cast<std::size_t>(month - 1)];
}

bool isWithin(int value, int low, int high) { return value >= low && value <= high; }

}  // namespace

bool isValid(const DateTime& moment) {
  return isWithin(moment.year, 100, 9999) && isWithin(moment.month, 1, 12) &&
         isWithin(moment.day, 1, daysIn(moment.year, moment.month)) && isWithin(moment.hour, 0, 23) &&
         isWithin(moment.minute, 0, 59) && isWithin(moment.second, 0, 59);
}

DateTime nextDay(DateTime moment) {
  if (++moment.day <= daysIn(moment.year, moment.month)) return moment;
  moment.day = 1;
  if (++moment.month <= 12) return moment;
  moment.month = 1;
  ++moment.year;
  return moment;
}

std::string formatDateTime(const DateTime& moment, std::string_view pattern, const DateNames& names) {
  const bool ofTwelve = pattern.find("AM/PM") != std::string_view::npos;
  PatternWriter writer(moment, ofTwelve, names);
  std::string result;
  while (!pattern.empty()) {
    const auto token = nextToken(pattern);
    writer.append(result, token);
    pattern.remove_prefix(token.size());
  }
  return result;
}

std::string generalDate(const DateTime& moment) {
  const bool midnight = moment.hour == 0 && moment.minute == 0 && moment.second == 0;
  return formatDateTime(moment, midnight ? "m/d/yyyy" : "m/d/yyyy h:mm:ss AM/PM");
}

std::optional<DateTime> parseGeneralDate(std::string_view text) {
  DateTime moment;
  text = text::trim(text);
  if (!takeDate(text, moment.month, moment.day, moment.year)) return std::nullopt;
  text = skipBlanks(text);
  if (!text.empty()) {
    if (!takeTime(text, moment)) return std::nullopt;
    applyMarker(skipBlanks(text), moment.hour);
  }
  return isValid(moment) ? std::optional(moment) : std::nullopt;
}

std::optional<DateTime> parseDisplayDate(std::string_view text, const DateNames& names) {
  DateTime moment;
  const auto name = std::ranges::find_if(names.abbreviated, [text](const std::string& each) {
    return text.starts_with(each) && text.substr(each.size()).starts_with(' ');
  });
  if (name == names.abbreviated.end()) return std::nullopt;
  moment.month = static_cast<int>(name - names.abbreviated.begin()) + 1;
  text = skipBlanks(text.substr(name->size()));
  const auto day = takeNumber(text);
  const auto year = day && take(text, ',') ? takeNumber(text = skipBlanks(text)) : std::nullopt;
  if (!year || !takeTime(text = skipBlanks(text), moment)) return std::nullopt;
  moment.day = *day;
  moment.year = *year;
  applyMarker(skipBlanks(text), moment.hour);
  return isValid(moment) ? std::optional(moment) : std::nullopt;
}

std::optional<DateTime> parseDayFirst(std::string_view text) {
  DateTime moment;
  text = text::trim(text);
  if (!takeDate(text, moment.day, moment.month, moment.year)) return std::nullopt;
  moment.year += 2000;
  text = skipBlanks(text);
  return takeTime(text, moment) && isValid(moment) ? std::optional(moment) : std::nullopt;
}

}  // namespace velmora
