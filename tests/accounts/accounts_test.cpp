#include "accounts/decisions/accounts.h"

#include <gmock/gmock.h>

#include "support/test_platform.h"

namespace velmora {
namespace {

using test::MemorySettings;

TEST(Accounts, AreKeptUnderTheirNames) {
  MemorySettings tree;
  Accounts accounts;
  accounts.ResizeAccounts(1);
  Accounts::SaveAccountFields(tree, 1, accounts[1]);
  EXPECT_THAT(tree.written,
              testing::UnorderedElementsAre("AcntEnabled1", "AcntName1", "AcntServer1", "AcntSecure1", "AcntPort1",
                                            "AcntLoginID1", "AcntPassword1", "AcntColour1", "AcntColourIndex1",
                                            "AcntClient1", "AcntSound1", "AcntSoundOn1"));
}

TEST(Accounts, CountIsWhatTheTreeSaysWhereThatMakesSense) {
  for (const auto& [stored, count] : {std::pair{"3", 3}, {"-4", 0}, {"many", 0}, {"", 0}, {"70000", 0}}) {
    MemorySettings tree;
    tree.values["Settings/AcntNum"] = stored;
    EXPECT_EQ(Accounts::storedCount(tree), count) << stored;
  }
}

TEST(Accounts, ResizingKeepsAllButTheIncompleteMark) {
  Accounts accounts;
  accounts.ResizeAccounts(1);
  accounts[1].AcntMsgCount = 7;
  accounts[1].AcntIncomplete = true;
  accounts.ResizeAccounts(2);
  EXPECT_EQ(accounts[1].AcntMsgCount, 7);
  EXPECT_FALSE(accounts[1].AcntIncomplete);
  EXPECT_THROW(accounts[3], RunTimeFailure);
}

}  // namespace
}  // namespace velmora
