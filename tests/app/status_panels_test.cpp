#include "app/decisions/status_panels.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(CountPanel, ShowsTheMostPressingCountAndItsTipSaysOfWhat) {
  struct Case {
    std::int16_t messages, fresh, spam, deleted, attach, deleteAttach, newAttach;
    CountPanel panel;
    const char* tip;
  };
  const Case cases[] = {
      {9, 2, 3, 1, 1, 1, 1, {"3", "SpamNew"}, "3 Messages Marked as Spam"},
      {9, 0, 1, 4, 1, 1, 1, {"1", "Spam"}, "1 Message Marked as Spam"},
      {9, 2, 0, 4, 1, 5, 1, {"5", "DeleteAttach"}, "5 Messages for Deletion"},
      {9, 0, 0, 1, 1, 1, 1, {"1", "DeleteAttach"}, "1 Message for Deletion"},
      {9, 0, 0, 4, 1, 0, 1, {"4", "Delete"}, "4 Messages for Deletion"},
      {9, 2, 0, 4, 0, 0, 6, {"6", "AttachNew"}, "6 Messages for Deletion"},
      {9, 2, 0, 4, 1, 0, 0, {"2", "New"}, "2 Messages for Deletion"},
      {9, 2, 0, 0, 1, 1, 0, {"2", "New"}, "2 Messages with an Attachment"},
      {9, 0, 0, 0, 7, 1, 1, {"7", "Attach"}, "7 Messages with an Attachment"},
      {9, 1, 0, 0, 1, 0, 1, {"1", "AttachNew"}, "1 Messages with an Attachment"},
      {1, 1, 0, 0, 1, 0, 1, {"1", "AttachNew"}, "1 Message with an Attachment"},
      {9, 1, 0, 0, 0, 0, 0, {"1", "New"}, "1 New Message"},
      {9, 3, 0, 0, 0, 0, 0, {"3", "New"}, "3 New Messages"},
      {1, 0, 0, 0, 0, 0, 0, {"1", "Normal"}, "1 Message"},
      {9, 0, 0, 0, 0, 0, 0, {"9", "Normal"}, "9 Messages"},
      {0, 0, 0, 0, 0, 0, 0, {"0", "Normal"}, "0 Messages"},
  };
  for (const auto& c : cases) {
    Accounts::Row row;
    row.AcntMsgCount = c.messages;
    row.AcntNewCount = c.fresh;
    row.AcntSpamCount = c.spam;
    row.AcntDeleteCount = c.deleted;
    const AttachmentCounts counts{c.attach, c.deleteAttach, c.newAttach};
    const CountPanel panel = countPanel(row, counts);
    EXPECT_EQ(panel.text, c.panel.text) << c.tip;
    EXPECT_EQ(panel.picture, c.panel.picture) << c.tip;
    EXPECT_EQ(countTip(row, counts, panel.text), c.tip);
  }
}

TEST(CountPanel, IsBlankWhereNothingIsKnown) {
  Accounts::Row row;
  row.AcntName = "Work";
  row.AcntMsgCount = 4;
  row.AcntLastCheckText = "Not Checked";
  EXPECT_EQ(countPanel(row, {}).text, "");
  EXPECT_EQ(countPanel(row, {}).picture, "");
  EXPECT_EQ(countTip(row, {}, ""), "");
  row.AcntLastCheckText = "Checked at: 4:21 PM";
  EXPECT_EQ(countPanel(row, {}).text, "4");
  row.AcntStatusText = "Work - User Stopped Retrieval";
  EXPECT_EQ(countPanel(row, {}).text, "");
}

TEST(PanelTips, TellWholeMoments) {
  const DateTime now{2026, 11, 5, 9, 4, 0};
  EXPECT_EQ(lastCheckTip("Checked at: 4:21 PM", now, {}), "Last Check: November 05, 2026 at 4:21 PM");
  for (const auto* other : {"Not Checked", "42 % Complete", "Checked at: noon"}) {
    EXPECT_EQ(lastCheckTip(other, now, {}), other);
  }
  EXPECT_EQ(nextCheckTip("Auto Check at 12:20 AM", "06/11/26-00:20", {}),
            "Next Auto Check: November 06, 2026 at 12:20 AM");
  EXPECT_EQ(nextCheckTip("Auto Check at 12:20 AM", "", {}), "Auto Check at 12:20 AM");
  EXPECT_EQ(nextCheckTip("Auto Check Off", "06/11/26-00:20", {}), "Auto Check is Off");
  EXPECT_EQ(nextCheckTip("Retrieving... (2 of 9)", "", {}), "Retrieving... (2 of 9)");
  EXPECT_EQ(nextCheckTip("", "", {}), "Auto Check is Off");
  EXPECT_EQ(clockTip(now, {}), "Current: November 05, 2026 9:04 AM");
}

}  // namespace
}  // namespace velmora
