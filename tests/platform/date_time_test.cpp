#include "platform/date_time.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

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
