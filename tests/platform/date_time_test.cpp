#include "platform/date_time.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(DateTime, WritesEveryPatternOfTheProgram) {
  const DateTime afternoon{2026, 11, 5, 16, 2, 9};
  const DateTime midnight{2026, 1, 31, 0, 30, 0};
  struct Case {
    DateTime moment;
    const char* pattern;
    const char* text;
  };
  const Case cases[] = {
      {afternoon, "dd/mm/yy-hh:mm", "05/11/26-16:02"},
      {midnight, "dd/mm/yy-hh:mm", "31/01/26-00:30"},
      {afternoon, "h:mm AM/PM", "4:02 PM"},
      {midnight, "h:mm AM/PM", "12:30 AM"},
      {afternoon, "mmm d/yy", "Nov 5/26"},
      {afternoon, "MMM dd, yyyy hh:mm:ss AM/PM", "Nov 05, 2026 04:02:09 PM"},
      {afternoon, "mmmm dd, yyyy at h:mm AM/PM", "November 05, 2026 at 4:02 PM"},
  };
  for (const auto& c : cases) EXPECT_EQ(formatDateTime(c.moment, c.pattern), c.text) << c.pattern;
}

TEST(DateTime, GeneralDateLeavesMidnightOut) {
  EXPECT_EQ(generalDate({2026, 12, 25, 22, 34, 56}), "12/25/2026 10:34:56 PM");
  EXPECT_EQ(generalDate({2026, 2, 3, 0, 0, 0}), "2/3/2026");
}

TEST(DateTime, ReadsGeneralDatesAndTheirBeginnings) {
  struct Case {
    const char* text;
    std::optional<DateTime> moment;
  };
  const Case cases[] = {
      {"12/5/2026 9:34:56 PM", DateTime{2026, 12, 5, 21, 34, 56}},
      {"12/5/2026 9:34:56 P", DateTime{2026, 12, 5, 21, 34, 56}},
      {"12/25/2026 10:34:56 ", DateTime{2026, 12, 25, 10, 34, 56}},
      {"1/2/2026 12:00:01 AM", DateTime{2026, 1, 2, 0, 0, 1}},
      {"1/2/2026", DateTime{2026, 1, 2, 0, 0, 0}},
      {"2/30/2026", std::nullopt},
      {"2/29/2028", DateTime{2028, 2, 29, 0, 0, 0}},
      {"1/2/2026 25:00:00", std::nullopt},
      {"99999999/1/1", std::nullopt},
      {"", std::nullopt},
      {"yesterday", std::nullopt},
  };
  for (const auto& c : cases) EXPECT_EQ(parseGeneralDate(c.text), c.moment) << c.text;
}

}  // namespace
}  // namespace velmora
