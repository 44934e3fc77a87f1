#include "accounts/accounts.h"

#include <gmock/gmock.h>

#include "support/test_platform.h"

namespace velmora {
namespace {

using test::MemorySettings;

TEST(Accounts, AreWrittenAndReadFieldByFieldInOrder) {
  MemorySettings tree;
  Accounts accounts;
  accounts.ResizeAccounts(10);
  Account& account = accounts[10];
  account.AcntName = "Zürich & Söhne";
  account.AcntPassword = " with blanks, \"quotes\" and = ";
  account.AcntColour = 16777215;
  accounts.SaveAccountFields(tree, 10);
  EXPECT_THAT(tree.written, testing::ElementsAre("AcntEnabled10", "AcntName10", "AcntServer10", "AcntSecure10",
                                                 "AcntPort10", "AcntLoginID10", "AcntPassword10", "AcntColour10",
                                                 "AcntColourIndex10", "AcntClient10", "AcntSound10", "AcntSoundOn10"));
  Accounts again;
  again.ResizeAccounts(10);
  again.LoadAccount(tree, 10);
  EXPECT_THAT(tree.read, testing::ElementsAreArray(tree.written));
  for (const auto& field : accountFields()) {
    EXPECT_TRUE(isEqual<Account>(field, again[10], accounts[10])) << field.key;
  }
  again.LoadAccount(tree, 1);
  EXPECT_EQ(again[1].AcntName, "New Account") << "the key of account 10 isn't that of account 1";
}

TEST(Accounts, HaveDefaultsAndABlankRow) {
  Accounts accounts;
  accounts.ResizeAccounts(1);
  accounts.LoadAccount(MemorySettings(), 1);
  const Account& fresh = accounts[1];
  EXPECT_EQ(fresh.AcntPort, "110");
  EXPECT_EQ(fresh.AcntColour, 255);
  EXPECT_EQ(fresh.AcntColourIndex, 5);
  EXPECT_EQ(fresh.AcntEnabled, 1);
  EXPECT_EQ(fresh.AcntSoundOn, 1);
  EXPECT_EQ(fresh.AcntSecure, 0);
  EXPECT_EQ(accounts[0].AcntEnabled, 0);
  EXPECT_EQ(accounts[0].AcntPort, "");
  EXPECT_EQ(accounts[0].AcntName, "");
  EXPECT_EQ(accounts[0].AcntSoundOn, 1);
  EXPECT_THROW(accounts[2], RunTimeFailure);
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
}

}  // namespace
}  // namespace velmora
