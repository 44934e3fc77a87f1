#include "platform/mime/message_date.h"

#include <gmime/gmime.h>

#include <memory>

namespace velmora::mime {

namespace {

struct DateDeleter {
  void operator()(GDateTime* date) const { g_date_time_unref(date); }
};
using DatePtr = std::unique_ptr<GDateTime, DateDeleter>;

constexpr int FirstYear = 1970;

}  // namespace

std::optional<DateTime> parseDate(const std::string& text) {
  const DatePtr date(g_mime_utils_header_decode_date(text.c_str()));
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
