#include "messages/captured_text.h"

#include <gtest/gtest.h>

#include "messages/pictures.h"

namespace velmora {
namespace {

TEST(CapturedText, SizesAreKilobytesRoundedHalfToEven) {
  for (const auto& [bytes, text] : {std::pair{499, "0"},
                                    {500, "0"},
                                    {501, "1"},
                                    {1500, "2"},
                                    {2500, "2"},
                                    {2501, "3"},
                                    {0, "0"},
                                    {2147483647, "2147484"}}) {
    EXPECT_EQ(sizeText(bytes), text) << bytes;
  }
}

TEST(CapturedText, CleansSendersAndRecipients) {
  EXPECT_EQ(cleanFrom("\"Smith & Jones\" <s&j@example.org>"), "Smith and Jones <sandj@example.org>");
  EXPECT_EQ(cleanTo("\"Ann\" <a@example.org>, \"Bob & Co\" <b@example.org>"),
            "Ann <a@example.org>, Bob & Co <b@example.org>");
  EXPECT_EQ(cleanTo("\"\""), "Undisclosed-Recipient");
  EXPECT_EQ(cleanTo(""), "Undisclosed-Recipient");
}

TEST(CapturedText, LongDatesLoseTheirMarker) {
  const MonthNames english;
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

TEST(CapturedText, NewIsWhatThePreviousPassDidNotHold) {
  EXPECT_EQ(newFlags({"a", "b", "a", "c"}, {"b", "", "x"}), (std::vector<bool>{true, false, true, true}));
  EXPECT_EQ(newFlags({}, {"b"}), std::vector<bool>{});
}

TEST(Pictures, RowsShowDeletionBeforeSpamBeforeAttachment) {
  // By the flags Delete, Spam, Attach, New, counted as a binary number.
  const char* const pictures[] = {"Normal", "New",     "Attach",       "AttachNew",   "Spam",         "SpamNew",
                                  "Spam",   "SpamNew", "Delete",       "Delete",      "DeleteAttach", "DeleteAttach",
                                  "Delete", "Delete",  "DeleteAttach", "DeleteAttach"};
  for (unsigned flags = 0; flags < 16; ++flags) {
    MailMessage message;
    message.Delete = (flags & 8U) != 0;
    message.Spam = (flags & 4U) != 0;
    message.Attach = (flags & 2U) != 0;
    message.New = (flags & 1U) != 0;
    EXPECT_EQ(rowPicture(message), pictures[flags]) << flags;
  }
}

TEST(Pictures, TabsShowWhatTheLastCheckFound) {
  struct Case {
    bool checked, connected, enabled;
    std::int16_t count;
    const char* picture;
  };
  const Case cases[] = {
      {false, false, true, 0, "MailNo"},
      {true, true, true, 0, "MailNo"},
      {true, true, true, 3, "MailYes"},
      {true, false, true, 0, "MailError"},
      {false, false, false, 0, "MailNoDisabled"},
      {true, true, false, 1, "MailYesDisabled"},
      {true, false, false, 0, "MailErrorDisabled"},
  };
  for (const auto& c : cases) {
    Accounts::Row row;
    row.AcntChecked = c.checked;
    row.AcntConnected = c.connected;
    row.AcntEnabled = c.enabled ? 1 : 0;
    row.AcntMsgCount = c.count;
    EXPECT_EQ(tabPicture(row), c.picture);
  }
  EXPECT_EQ(spinPicture(1), "MailSpin8");
  EXPECT_EQ(spinPicture(8), "MailSpin1");
}

}  // namespace
}  // namespace velmora
