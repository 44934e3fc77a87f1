#include "platform/mime/message_date.h"

#include <gmime/gmime.h>

#include <algorithm>
#include <memory>
#include <string_view>

namespace velmora::mime {

namespace {

struct DateDeleter {
  void operator()(GDateTime* date) const { g_date_time_unref(date); }
};
using DatePtr = std::unique_ptr<GDateTime, DateDeleter>;

constexpr int FirstYear = 1970;

/// A word of a date as the library reads it, where it is written otherwise: "10.00.00", "10:00:00.123", "23:59:60",
/// "+05:30".
std::string tidiedWord(std::string_view word) {
  std::string text(word);
  std::string shape(word);
  for (char& c : shape) c = c >= '0' && c <= '9' ? '0' : c;
  if (shape == "+00:00" || shape == "-00:00") return text.erase(3, 1);

  const std::size_t hours = std::min(shape.find_first_not_of('0'), shape.size());
  const std::string_view behind = std::string_view(shape).substr(hours);
  constexpr std::size_t size = 6;
  if ((!behind.starts_with(":00:00") && !behind.starts_with(".00.00")) || behind.substr(size, 1) == "0") return text;
  if (behind.substr(size, 1) == ".") text.erase(hours + size, behind.find_first_not_of('0', size + 1) - size);
  text[hours] = text[hours + 3] = ':';
  if (text.compare(hours + 4, 2, "60") == 0) text.replace(hours + 4, 2, "59");
  return text;
}

std::string tidied(std::string_view text) {
  std::string result;
  while (true) {
    const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
    result += tidiedWord(text.substr(0, end));
    if (end == text.size()) return result;
    result += ' ';
    text.remove_prefix(end + 1);
  }
}

}  // namespace

std::optional<DateTime> parseDate(const std::string& text) {
  const DatePtr date(g_mime_utils_header_decode_date(tidied(text).c_str()));
  const DatePtr local(date ? g_date_time_to_local(date.get()) : nullptr);
  if (!local || g_date_time_get_year(local.get()) < FirstYear) return std::nullopt;
  return DateTime{.year = g_date_time_get_year(local.get()),
                  .month = g_date_time_get_month(local.get()),
                  .day = g_date_time_get_day_of_month(local.get()),
                  .hour = g_date_time_get_hour(local.get()),
                  .minute = g_date_time_get_minute(local.get()),
                  .second = g_date_time_get_second(local.get())};
}

}  // namespace velmora::mime
