#include "app/status_panels.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(CountPanel, ShowsTheMostPressingCount) {
  struct Case {
    std::int16_t fresh, spam, deleted, attach, deleteAttach, newAttach;
    const char* text;
    const char* picture;
  };
  const Case cases[] = {
      {2, 3, 1, 1, 1, 1, "3", "SpamNew"},      {2, 0, 4, 1, 5, 1, "5", "DeleteAttach"},
      {2, 0, 4, 1, 0, 0, "2", "New"},          {2, 0, 0, 1, 1, 0, "2", "New"},
      {2, 0, 4, 0, 0, 6, "6", "AttachNew"},    {0, 3, 1, 1, 1, 1, "3", "Spam"},
      {0, 0, 4, 1, 5, 1, "5", "DeleteAttach"}, {0, 0, 4, 1, 0, 1, "4", "Delete"},
      {0, 0, 0, 7, 1, 1, "7", "Attach"},       {0, 0, 0, 0, 0, 0, "9", "Normal"},
  };
  for (const auto& c : cases) {
    Accounts::Row row;
    row.AcntMsgCount = 9;
    row.AcntNewCount = c.fresh;
    row.AcntSpamCount = c.spam;
    row.AcntDeleteCount = c.deleted;
    const CountPanel panel = countPanel(row, {c.attach, c.deleteAttach, c.newAttach});
    EXPECT_EQ(panel.text, c.text);
    EXPECT_EQ(panel.picture, c.picture);
  }
}

TEST(CountPanel, IsBlankWhereNothingIsKnown) {
  Accounts::Row row;
  row.AcntName = "Work";
  row.AcntMsgCount = 4;
  row.AcntLastCheckText = "Not Checked";
  EXPECT_EQ(countPanel(row, {}).text, "");
  EXPECT_EQ(countPanel(row, {}).picture, "");
  row.AcntLastCheckText = "Checked at: 4:21 PM";
  EXPECT_EQ(countPanel(row, {}).text, "4");
  row.AcntStatusText = "Work - User Stopped Retrieval";
  EXPECT_EQ(countPanel(row, {}).text, "");
}

}  // namespace
}  // namespace velmora
