#include "messages/decisions/captured_text.h"

#include <gtest/gtest.h>

#include "messages/decisions/pictures.h"

namespace velmora {
namespace {

TEST(CapturedText, SizesAreKilobytesRoundedHalfToEven) {
  const std::pair<std::int32_t, const char*> cases[] = {
      {500, "0"}, {501, "1"}, {1500, "2"}, {2500, "2"}, {2147483647, "2147484"}};
  for (const auto& [bytes, text] : cases) EXPECT_EQ(sizeText(bytes), text) << bytes;
}

TEST(CapturedText, CleansSendersAndRecipients) {
  EXPECT_EQ(cleanFrom("\"Smith & Jones\" <s&j@example.org>"), "Smith and Jones <sandj@example.org>");
  EXPECT_EQ(cleanTo("\"Ann\" <a@example.org>, \"Bob & Co\" <b@example.org>"),
            "Ann <a@example.org>, Bob & Co <b@example.org>");
  EXPECT_EQ(cleanTo("\"\""), "Undisclosed-Recipient");
  EXPECT_EQ(cleanTo(""), "Undisclosed-Recipient");
}

TEST(CapturedText, LongDatesLoseTheirMarker) {
  const DateNames english;
  const std::pair<DateTime, const char*> cases[] = {
      {{2026, 11, 15, 16, 22, 5}, "Nov 15, 2026 04:22:05 PM"},
      {{2026, 12, 25, 22, 34, 56}, "Dec 25, 2026 10:34:56 AM"},
      {{2026, 12, 25, 21, 34, 56}, "Dec 25, 2026 09:34:56 PM"},
      {{2026, 1, 2, 0, 0, 0}, "Jan 02, 2026 12:00:00 AM"},
      {{2026, 1, 2, 22, 0, 1}, "Jan 02, 2026 10:00:01 PM"},
  };
  for (const auto& [date, text] : cases) EXPECT_EQ(displayDate(generalDate(date), english), text);
  EXPECT_EQ(displayDate("Sun, 11/15/2026 4:22:05 PM", english), "Nov 15, 2026 04:22:05 PM");
  EXPECT_EQ(displayDate("Sun", english), "Sun");
}

TEST(Pictures, RowsShowDeletionBeforeSpamBeforeAttachment) {
  // With an attachment, by the flags Delete, Spam, New, counted as a binary number.
  const char* const pictures[] = {"Attach",       "AttachNew",    "Spam",         "SpamNew",
                                  "DeleteAttach", "DeleteAttach", "DeleteAttach", "DeleteAttach"};
  for (unsigned flags = 0; flags < 8; ++flags) {
    MailMessage message;
    message.Attach = true;
    message.Delete = (flags & 4U) != 0;
    message.Spam = (flags & 2U) != 0;
    message.New = (flags & 1U) != 0;
    EXPECT_EQ(rowPicture(message), pictures[flags]) << flags;
  }
}

}  // namespace
}  // namespace velmora
