#include "platform/mime/message_date.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <string>

#include "platform/mime/date_names.h"
#include "platform/mime/date_order.h"
#include "platform/mime/date_pieces.h"
#include "platform/mime/date_zone.h"

namespace velmora::mime {

namespace {

constexpr int FirstYear = 1970;
constexpr int LastYear = 9999;

struct Time {
  int Hour = 0;
  int Minute = 0;
  int Second = 0;
};

bool isAscii(std::string_view word) {
  return std::ranges::all_of(word, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Blanks that keep words together are blanks here.
std::string withPlainBlanks(std::string_view text) {
  std::string plain(text);
  for (const std::string_view blank : {"\u00A0", "\u202F"})
    for (auto at = plain.find(blank); at != plain.npos; at = plain.find(blank, at))
      plain.replace(at, blank.size(), " ");
  return plain;
}

/// Collects what the pieces of a text say, wherever they stand.
class DateReader {
 public:
  explicit DateReader(std::string_view text) : pieces_(text) {
    while (!pieces_.atEnd() && !isWrong_) readPiece();
  }

  bool hasTime() const { return time_.has_value(); }

  /// Seconds since the beginning of 1970, in UTC.
  std::optional<std::chrono::sys_seconds> moment() {
    findDate();
    const auto [hour, minute, second] = time_.value_or(Time{});
    const bool isEndOfDay = hour == 24 && minute == 0 && second == 0;
    // The last second of a minute that has one more is taken twice.
    const bool isTime = (hour < 24 || isEndOfDay) && minute < 60 && second <= 60 && (!isStrange_ || hour > halfDay);
    // What isn't understood beside a date may be its time.
    if (isWrong_ || !date_ || !isTime || (isLeft_ && !time_)) return std::nullopt;
    return std::chrono::sys_days(*date_) + std::chrono::hours(hourOfDay(hour)) + std::chrono::minutes(minute - zone()) +
           std::chrono::seconds(std::min(second, 59));
  }

 private:
  static constexpr int halfDay = 12;

  void readPiece() {
    const char c = pieces_.front();
    if (c == '(')
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

  /// Some programs write the zone nowhere else.
  void readComment() {
    const auto zone = zoneInComment(pieces_.takeComment());
    if (time_ && !commentZone_) commentZone_ = zone;
  }

  void readWord() {
    if (readDate() || readHalf()) return;
    const std::string_view word = pieces_.takeWord();
    if (readMonth(word)) return;
    // The month of another language, behind a weekday of its that has the name of a month: "mar. 29 mai 2019".
    constexpr std::size_t shortestMonth = 3;
    isWrong_ = !time_ && count_ == 1 && word.size() >= shortestMonth;
    if (time_)
      readZone(word);
    else
      noteStranger(word);
  }

  /// A half of the day in another language may stand beside a time.
  void noteStranger(std::string_view word) {
    Pieces ahead = pieces_;
    ahead.skipBlanks(" \t.");
    isStrange_ = isStrange_ || (!isAscii(word) && ahead.isTimeNext());
  }

  void readZone(std::string_view word) {
    if (!pieces_.atEnd() && pieces_.front() == '/') {
      // In "Etc/GMT-3" the sign means the contrary.
      while (!pieces_.atEnd() && pieces_.front() != ' ') pieces_.take();
    } else if (namedZone_ && word == "DST") {
      *namedZone_ += 60;
    } else if (!namedZone_) {
      namedZone_ = zoneNamed(word);
    }
  }

  bool readHalf() {
    const Pieces before = pieces_;
    const char half = pieces_.takeHalf();
    if (half == ' ') return false;
    pieces_.skipBlanks();
    const bool isOfTime = time_ || (pieces_.isTimeNext() && readTime());
    if (isOfTime)
      half_ = half;
    else
      pieces_ = before;
    return isOfTime;
  }

  bool readMonth(std::string_view word) {
    auto month = monthNamed(word);
    if (!month && isBetweenDayAndYear()) month = monthNamed(word.substr(0, 3));
    if (!month) return false;
    // In some languages a weekday has the name of a month.
    isWrong_ = month_.has_value();
    month_ = month;
    return true;
  }

  /// There, many languages have a name that begins as the English one: "26 Juni 2019".
  bool isBetweenDayAndYear() const {
    Pieces ahead = pieces_;
    ahead.skipBlanks(" \t.,");
    return !month_ && !date_ && count_ == 1 && numbers_[0].Digits <= 2 && ahead.isDigitNext();
  }

  void readNumber() {
    if (readTime() || readDate()) return;
    const Element number = pieces_.takeNumber();
    isLeft_ = isLeft_ || count_ == numbers_.size();
    if (count_ < numbers_.size()) numbers_[count_++] = number;
  }

  /// A time with dots looks like a date with dots, and stands behind the date.
  bool readTime() {
    if (time_) return false;
    const bool hasDate = date_ || (month_ && count_ > 1) || count_ == numbers_.size();
    Pieces ahead = pieces_;
    const Element hour = ahead.takeNumber();
    const char sign = hasDate && !ahead.atEnd() && ahead.front() == '.' ? '.' : ':';
    if (!ahead.takeBetween(sign)) return readHour(hour, ahead);
    const Element minute = ahead.takeNumber();
    const Element second = ahead.takeBetween(sign) ? ahead.takeNumber() : Element{0, 1};
    if (ahead.takeBeforeDigit('.') || ahead.takeBeforeDigit(',')) ahead.takeNumber();
    isWrong_ = std::max({hour.Digits, minute.Digits, second.Digits}) > 2;
    time_ = {hour.Value, minute.Value, second.Value};
    pieces_ = ahead;
    ahead.skipBlanks();
    isStrange_ = isStrange_ || !isAscii(ahead.takeWord());
    return true;
  }

  /// "6 PM".
  bool readHour(const Element& hour, Pieces behind) {
    behind.skipBlanks();
    const char half = behind.takeHalf();
    Pieces ahead = behind;
    ahead.skipBlanks();
    if (half == ' ' || hour.Value > halfDay || ahead.isTimeNext()) return false;
    time_ = {hour.Value, 0, 0};
    half_ = half;
    pieces_ = behind;
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
    date_ = dateOf(*first, *second, *third, sign);
    isWrong_ = isWrong_ || !date_;
    pieces_ = ahead;
    return true;
  }

  void readOffset() {
    Pieces ahead = pieces_;
    const bool isBehind = ahead.take() == '-';
    const bool isSpan = ahead.skipBlanks() && isBehind && ahead.isTimeNext();  // "10:20 - 11:30"
    const bool isOffset = ahead.isDigitNext() && !isSpan;
    const auto offset = takeOffset(pieces_);
    if (!isOffset) return;
    isWrong_ = !offset;
    offset_ = offset;
  }

  void findDate() {
    const auto& [first, second, third] = numbers_;
    if (date_) {
      isWrong_ = isWrong_ || month_;
      isLeft_ = isLeft_ || count_ > 0;
    } else if (month_ && count_ > 1) {
      date_ = first.Digits > 2 ? dateOf(first, *month_, second) : dateOf(second, *month_, first);
      isLeft_ = isLeft_ || count_ > 2;
    } else if (!month_ && count_ == numbers_.size() && (first.Digits == 4 || third.Digits == 4)) {
      date_ = dateOf(first, second, third, ' ');
    }
  }

  /// Some programs write a half beside an hour of twenty-four.
  int hourOfDay(int hour) const {
    if (half_ == ' ' || hour == 0 || hour > halfDay) return hour;
    return hour % halfDay + (half_ == 'p' ? halfDay : 0);
  }

  int zone() const { return offset_.value_or(namedZone_.value_or(commentZone_.value_or(0))); }

  Pieces pieces_;
  std::optional<std::chrono::year_month_day> date_;
  std::optional<int> month_;        ///< by its name
  std::array<Element, 3> numbers_;  ///< that may be day, year, and a month
  std::size_t count_ = 0;           ///< of those
  std::optional<Time> time_;
  char half_ = ' ';  ///< of the day, "a" or "p"
  std::optional<int> offset_;
  std::optional<int> namedZone_;
  std::optional<int> commentZone_;
  bool isStrange_ = false;  ///< the time has a word beside it that nobody knows
  bool isLeft_ = false;     ///< there are more numbers than a date has
  bool isWrong_ = false;
};

}  // namespace

std::optional<DateTime> parseDate(std::string_view text, TimeOfDay time) {
  const std::string plain = withPlainBlanks(text);
  DateReader reader(plain);
  const auto moment = reader.moment();
  if (!moment || (time == TimeOfDay::Needed && !reader.hasTime())) return std::nullopt;
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
