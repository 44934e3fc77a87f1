#include "platform/mime/message_date.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <ctime>

#include "platform/ascii.h"
#include "platform/mime/date_names.h"
#include "platform/mime/date_pieces.h"

namespace velmora::mime {

namespace {

constexpr int FirstYear = 1970;
constexpr int LastYear = 9999;

/// No zone is farther from UTC, in minutes.
constexpr int FarthestZone = 14 * 60;

/// As far as it can be: two digits mean a year from 1950 to 2049, three count from 1900 (RFC 5322 section 4.3).
int yearOf(const Element& year) {
  constexpr int century = 100;
  if (year.Digits <= 2) return year.Value + (year.Value < century / 2 ? 20 : 19) * century;
  return year.Digits == 3 ? year.Value + 19 * century : year.Value;
}

struct Time {
  int Hour = 0;
  int Minute = 0;
  int Second = 0;
};

/// Collects what the pieces of a text say, wherever they stand.
class DateReader {
 public:
  explicit DateReader(std::string_view text) : pieces_(text) {
    while (!pieces_.atEnd() && !isWrong_) readPiece();
  }

  /// Seconds since the beginning of 1970, in UTC.
  std::optional<std::chrono::sys_seconds> moment() {
    findDate();
    const auto [hour, minute, second] = time_.value_or(Time{});
    const bool isEndOfDay = hour == 24 && minute == 0 && second == 0;
    // The last second of a minute that has one more is taken twice.
    const bool isTime = (hour < 24 || isEndOfDay) && minute < 60 && second <= 60;
    if (isWrong_ || !date_ || !date_->ok() || !isTime) return std::nullopt;
    return std::chrono::sys_days(*date_) + std::chrono::hours(hourOfDay(hour)) + std::chrono::minutes(minute - zone()) +
           std::chrono::seconds(std::min(second, 59));
  }

 private:
  void readPiece() {
    const char c = pieces_.front();
    if (c == '(' || c == ')')
      readBracket();
    else if (comments_ > 0)
      readComment();
    else if (pieces_.isWordNext())
      readWord();
    else if (pieces_.isDigitNext())
      readNumber();
    else if ((c == '+' || c == '-') && time_ && !offset_)
      readOffset();
    else
      pieces_.take();
  }

  void readBracket() {
    if (pieces_.take() == '(')
      ++comments_;
    else if (comments_ > 0)
      --comments_;
  }

  /// Some programs write the zone nowhere else.
  void readComment() {
    if (pieces_.isWordNext()) {
      const std::string_view word = pieces_.takeWord();
      if (word.size() > 1 && time_ && !namedZone_) namedZone_ = zoneNamed(word);
    } else if (pieces_.take() == '\\' && !pieces_.atEnd()) {
      pieces_.take();
    }
  }

  void readWord() {
    if (readDate()) return;
    const std::string_view word = pieces_.takeWord();
    if (readMonth(word)) return;
    // The month of another language, behind a weekday of its that has the name of a month: "mar. 29 mai 2019".
    constexpr std::size_t shortestMonth = 3;
    isWrong_ = !time_ && count_ == 1 && word.size() >= shortestMonth;
    if (!time_) return;
    const bool isHalf = (word.size() == 2 || (word.size() == 3 && word[1] == '.')) && ascii::lower(word.back()) == 'm';
    const char half = isHalf ? ascii::lower(word.front()) : ' ';
    if (half == 'a' || half == 'p')
      half_ = half;
    else if (!namedZone_)
      namedZone_ = zoneNamed(word);
  }

  bool readMonth(std::string_view word) {
    const auto month = monthNamed(word);
    if (!month) return false;
    // In some languages a weekday has the name of a month.
    isWrong_ = month_.has_value();
    month_ = month;
    return true;
  }

  void readNumber() {
    if (readTime() || readDate()) return;
    const Element number = pieces_.takeNumber();
    if (count_ < numbers_.size()) numbers_[count_++] = number;
  }

  /// A time with dots looks like a date with dots, and stands behind the date.
  bool readTime() {
    if (time_) return false;
    const bool hasDate = date_ || count_ == numbers_.size();
    Pieces ahead = pieces_;
    const Element hour = ahead.takeNumber();
    const char sign = hasDate && !ahead.atEnd() && ahead.front() == '.' ? '.' : ':';
    if (!ahead.takeBeforeDigit(sign)) return false;
    const Element minute = ahead.takeNumber();
    const Element second = ahead.takeBeforeDigit(sign) ? ahead.takeNumber() : Element{0, 1};
    if (ahead.takeBeforeDigit('.') || ahead.takeBeforeDigit(',')) ahead.takeNumber();
    isWrong_ = std::max({hour.Digits, minute.Digits, second.Digits}) > 2;
    time_ = {hour.Value, minute.Value, second.Value};
    pieces_ = ahead;
    return true;
  }

  /// Three elements with the same sign between them.
  bool readDate() {
    Pieces ahead = pieces_;
    const auto first = ahead.takeElement();
    if (!first || ahead.atEnd()) return false;
    const char sign = ahead.take();
    if (std::string_view("-/.").find(sign) == std::string_view::npos) return false;
    const auto second = ahead.takeElement();
    if (!second || ahead.atEnd() || ahead.take() != sign) return false;
    const auto third = ahead.takeElement();
    if (!third) return false;
    isWrong_ = date_ || third->isMonth() || (first->isMonth() && second->isMonth());
    setDate(*first, *second, *third, sign);
    pieces_ = ahead;
    return true;
  }

  void setDate(const Element& first, const Element& second, const Element& third, char sign) {
    constexpr int months = 12;
    const bool isMonthFirst =
        first.isMonth() || (!second.isMonth() && (sign == '/' ? first.Value <= months : second.Value > months));
    if (first.Digits > 2)
      setDate(first, second.Value, third);
    else if (isMonthFirst)
      setDate(third, first.Value, second);
    else
      setDate(third, second.Value, first);
  }

  void setDate(const Element& year, int month, const Element& day) {
    isWrong_ = isWrong_ || year.Digits > 4 || month > 12 || day.Digits > 2;
    date_ = std::chrono::year(yearOf(year)) / month / day.Value;
  }

  /// "+0200", "+02:00", "+2".
  void readOffset() {
    const bool isBehind = pieces_.take() == '-';
    pieces_.skipBlanks();
    if (!pieces_.isDigitNext()) return;
    const Element first = pieces_.takeNumber();
    int minutes = first.Digits <= 2 ? first.Value * 60 : first.Value / 100 * 60 + first.Value % 100;
    bool isZone = first.Digits <= 4 && (first.Digits <= 2 || first.Value % 100 < 60);
    if (pieces_.takeBeforeDigit(':')) {
      const Element second = pieces_.takeNumber();
      isZone = first.Digits <= 2 && second.Digits == 2 && second.Value < 60;
      minutes += second.Value;
    }
    isWrong_ = !isZone || minutes > FarthestZone;
    offset_ = isBehind ? -minutes : minutes;
  }

  void findDate() {
    if (month_ && !date_ && count_ == numbers_.size()) {
      const bool isYearFirst = numbers_[0].Digits > 2;
      setDate(numbers_[isYearFirst ? 0 : 1], *month_, numbers_[isYearFirst ? 1 : 0]);
    } else {
      isWrong_ = isWrong_ || month_;
    }
  }

  /// Some programs write a half beside an hour of twenty-four.
  int hourOfDay(int hour) const {
    constexpr int half = 12;
    if (half_ == ' ' || hour == 0 || hour > half) return hour;
    return hour % half + (half_ == 'p' ? half : 0);
  }

  int zone() const { return offset_.value_or(namedZone_.value_or(0)); }

  Pieces pieces_;
  std::size_t comments_ = 0;  ///< that are open
  std::optional<std::chrono::year_month_day> date_;
  std::optional<int> month_;        ///< by its name
  std::array<Element, 2> numbers_;  ///< that may be day and year
  std::size_t count_ = 0;           ///< of those
  std::optional<Time> time_;
  char half_ = ' ';  ///< of the day, "a" or "p"
  std::optional<int> offset_;
  std::optional<int> namedZone_;
  bool isWrong_ = false;
};

}  // namespace

std::optional<DateTime> parseDate(std::string_view text) {
  const auto moment = DateReader(text).moment();
  if (!moment) return std::nullopt;
  const std::time_t seconds = moment->time_since_epoch().count();
  std::tm local{};
  if (localtime_r(&seconds, &local) == nullptr) return std::nullopt;
  constexpr int tmEpoch = 1900;
  const int year = local.tm_year + tmEpoch;
  if (year < FirstYear || year > LastYear) return std::nullopt;
  return DateTime{.year = year,
                  .month = local.tm_mon + 1,
                  .day = local.tm_mday,
                  .hour = local.tm_hour,
                  .minute = local.tm_min,
                  .second = local.tm_sec};
}

}  // namespace velmora::mime
