#include "platform/mime/date_order.h"

#include <algorithm>
#include <array>

namespace velmora::mime {

namespace {

using Date = std::optional<std::chrono::year_month_day>;

/// As far as it can be: two digits mean a year from 1950 to 2049, three count from 1900 (RFC 5322 section 4.3).
int yearOf(const Element& year) {
  constexpr int century = 100;
  if (year.Digits <= 2) return year.Value + (year.Value < century / 2 ? 20 : 19) * century;
  return year.Digits == 3 ? year.Value + 19 * century : year.Value;
}

Date onlyDateOf(const Element& first, const Element& second, const Element& third) {
  const std::array orders = {dateOf(third, second.Value, first), dateOf(third, first.Value, second),
                             dateOf(first, second.Value, third)};
  Date only;
  for (const Date& date : orders) {
    if (date && only && date != only) return std::nullopt;
    if (date) only = date;
  }
  return only;
}

}  // namespace

Date dateOf(const Element& year, int month, const Element& day) {
  if (year.Digits > 4 || day.Digits > 2) return std::nullopt;
  const auto date = std::chrono::year(yearOf(year)) / month / day.Value;
  return month <= 12 && date.ok() ? Date(date) : std::nullopt;
}

Date dateOf(const Element& first, const Element& second, const Element& third, char sign) {
  constexpr int months = 12;
  const bool isNamed = first.isMonth() || second.isMonth();
  if (!isNamed && std::max({first.Digits, second.Digits, third.Digits}) <= 2) return onlyDateOf(first, second, third);
  const bool isMonthFirst =
      first.isMonth() || (!second.isMonth() && (sign == '/' ? first.Value <= months : second.Value > months));
  if (first.Digits > 2) return dateOf(first, second.Value, third);
  return isMonthFirst ? dateOf(third, first.Value, second) : dateOf(third, second.Value, first);
}

}  // namespace velmora::mime
