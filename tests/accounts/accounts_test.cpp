#include "accounts/decisions/accounts.h"

#include <gmock/gmock.h>

#include "support/test_platform.h"

namespace velmora {
namespace {

using test::MemorySettings;

TEST(Accounts, CountIsWhatTheTreeSaysWhereThatMakesSense) {
  for (const int named : {0, 2, 1001}) {
    MemorySettings tree;
    for (int number = 1; number <= named; ++number) tree.values["Settings/AcntName" + std::to_string(number)] = "x";
    const auto none = Accounts::storedCount(tree);
    EXPECT_EQ(std::pair(none.count, none.isSound),
              std::pair(static_cast<std::int16_t>(std::min(named, 1000)), named == 0));
    for (const auto& [stored, count] : {std::pair{"3", 3},
                                        {"0", 0},
                                        {"1000", 1000},
                                        {"-4", -1},
                                        {"many", -1},
                                        {"", -1},
                                        {"1001", -1},
                                        {"32768", -1},
                                        {"70000", -1}}) {
      tree.values["Settings/AcntNum"] = stored;
      const auto found = Accounts::storedCount(tree);
      EXPECT_EQ(found.count, count >= 0 ? count : std::min(named, 1000)) << stored;
      EXPECT_EQ(found.isSound, count >= 0 || (named == 0 && *stored == '\0')) << stored;
    }
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
