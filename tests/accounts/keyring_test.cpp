#include <gmock/gmock.h>

#include <memory>

#include "accounts/accounts_page.h"
#include "accounts/decisions/keyring_texts.h"
#include "accounts/read_password.h"
#include "app/shut_down.h"
#include "checking/check_cycle.h"
#include "options/save_options.h"
#include "platform/failure.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using Outcome = KeyringAnswer::Outcome;
using testing::HasSubstr;
using testing::IsEmpty;

const std::vector<std::string> names = {"One", "Two", "Three"};

/// What a killed program leaves.
struct Disk {
  std::map<std::string, std::string> settings = {{"Settings/AcntNum", "3"}, {"Settings/FirstUse", "1"}};
  std::map<std::string, std::string> entries;

  std::string& at(const std::string& key, int number) { return settings["Settings/" + key + std::to_string(number)]; }
};

Disk plainDisk() {
  Disk disk;
  int number = 0;
  for (const auto& name : names) {
    ++number;
    for (const auto* key : {"AcntName", "AcntServer", "AcntLoginID"}) disk.at(key, number) = name;
    disk.at("AcntPassword", number) = "secret of " + name;
  }
  return disk;
}

/// A run of the program on a disk, which takes only the first `lasting` writes.
struct ProgramRun {
  explicit ProgramRun(Disk& on, int lasting = 1000) : disk(on), left(lasting) {
    platform.tree.values = disk.settings;
    platform.ring.entries = disk.entries;
    platform.tree.onKept = [this] { disk.settings = left-- > 0 ? platform.tree.values : disk.settings; };
    platform.ring.onChanged = [this] { disk.entries = left-- > 0 ? platform.ring.entries : disk.entries; };
    platform.answers = {Answer::Yes};
    for (const auto& name : names) platform.servers[name].users = {{name, "secret of " + name}};
    EXPECT_TRUE(Main(program));
  }
  void choose(std::int16_t on) {
    program.frmMain.chkUseKeyring.Value = on;
    SaveOptions(program);
  }
  MainWindow& showAccounts() {
    program.frmMain.tbrMainButtons["Accounts"].click();
    return program.frmMain;
  }
  void saveFirst(const std::string& password) {
    showAccounts().txtAcntPassword.Text = password;
    program.frmMain.tbrButtons[saveAccountBar]["SaveAccount"].click();
  }
  void deleteFirst() { showAccounts().tbrAcnts["AcntDelete"].click(); }
  bool reached(std::int16_t number) { return program.accounts[number].AcntConnected; }

  Disk& disk;
  int left;
  test::TestPlatform platform;
  Program program{platform};
};

/// Each password is in one place, can be had after a new start, and nothing is left over once the user has checked.
void expectNothingLost(Disk disk) {
  const int count = std::stoi(disk.settings["Settings/AcntNum"]);
  for (int number = 1; number <= count; ++number) {
    EXPECT_NE(disk.at("AcntPassword", number).empty(), disk.at("AcntKeyringKey", number).empty()) << number;
  }
  {
    ProgramRun next(disk);
    for (const std::int16_t number : next.program.accounts.numbers()) {
      const std::string& name = next.program.accounts[number].AcntName;
      EXPECT_THAT(PasswordOf(next.program, number), testing::AnyOf("secret of " + name, name == "One" ? "new" : "-"));
    }
    EXPECT_THAT(next.platform.passwordsAsked, IsEmpty());
    CheckAllAccounts(next.program);
  }
  std::size_t held = 0;
  for (int number = 1; number <= count; ++number) held += disk.at("AcntKeyringKey", number).empty() ? 0U : 1U;
  EXPECT_EQ(disk.entries.size(), held);
  EXPECT_EQ(disk.settings.count("Settings/KeyringSpares"), 0U);
}

TEST(KeyringMoves, LoseNothingWhereverTheyAreKilled) {
  Disk plain = plainDisk();
  Disk held = plain;
  ProgramRun(held).choose(1);
  ASSERT_EQ(held.entries.size(), 3U);
  const std::tuple<const char*, Disk, std::function<void(ProgramRun&)>, int> deeds[] = {
      {"there", plain, [](ProgramRun& run) { run.choose(1); }, 6},
      {"back", held, [](ProgramRun& run) { run.choose(0); }, 5},
      {"another password", held, [](ProgramRun& run) { run.saveFirst("new"); }, 5},
      {"none", held, [](ProgramRun& run) { run.deleteFirst(); }, 3},
      {"all at once", plain,
       [](ProgramRun& run) { run.choose(1), run.saveFirst("new"), run.deleteFirst(), run.choose(0); }, 16},
  };
  for (const auto& [name, before, deed, leastWrites] : deeds) {
    int writes = 0;
    for (int lasting = 0; lasting <= writes; ++lasting) {
      SCOPED_TRACE(std::string(name) + ", killed behind write " + std::to_string(lasting));
      Disk disk = before;
      {
        ProgramRun run(disk, lasting);
        deed(run);
        writes = lasting - std::min(run.left, 0);
      }
      expectNothingLost(disk);
    }
    EXPECT_GE(writes, leastWrites) << name;
  }
}

TEST(KeyringMoves, AreMadeForAllAccountsOrNone) {
  for (const bool isBack : {false, true}) {
    Disk disk = plainDisk();
    if (isBack) ProgramRun(disk).choose(1);
    ProgramRun run(disk);
    const KeyringAnswer refusal{.outcome = Outcome::Refused, .detail = "No luck"};
    run.platform.ring.onUse = [&] {
      if (run.platform.ring.uses == 3) run.platform.ring.refusal = refusal;
    };
    run.program.frmMain.chkPlaySound.Value = 0;
    run.choose(isBack ? 0 : 1);
    ASSERT_EQ(run.platform.asked.size(), 1U);
    EXPECT_THAT(run.platform.asked[0].text, HasSubstr(keyringTrouble(refusal)));
    EXPECT_EQ(run.program.frmMain.chkUseKeyring.Value.get(), isBack ? 1 : 0);
    EXPECT_EQ(disk.settings["Settings\\Options/PlaySound"], "0") << "all else is saved";
    for (int number = 1; number <= 3; ++number) EXPECT_EQ(disk.at("AcntPassword", number).empty(), isBack);
    expectNothingLost(disk);
    if (!isBack) continue;
    run.platform.ring.onUse = nullptr;
    run.platform.ring.refusal = KeyringAnswer{.outcome = Outcome::NotThere};
    run.platform.enteredPassword = "secret of Three";
    run.choose(0);
    EXPECT_EQ(disk.at("AcntPassword", 3), "secret of Three") << "a keyring that is gone binds nobody";
    EXPECT_EQ(run.platform.asked.back().title, "Velmora - Keyring") << "what it still holds";
  }
}

TEST(KeyringMoves, NeverTouchAKeyringThatNobodyHasChosen) {
  Disk disk = plainDisk();
  ProgramRun run(disk);
  CheckAllAccounts(run.program);
  run.saveFirst("new");
  run.deleteFirst();
  SaveOptions(run.program);
  EXPECT_EQ(run.platform.ring.uses, 0);
  EXPECT_EQ(disk.at("AcntPassword", 1), "secret of Two");
}

TEST(KeyringReading, AsksTheUserWhereHeWaitsAndFailsWhereNobodyDoes) {
  Disk disk = plainDisk();
  ProgramRun(disk).choose(1);
  ProgramRun run(disk);
  auto& ring = run.platform.ring;
  ring.refusal = {.outcome = Outcome::Refused};
  AutoCheckAccounts(run.program);
  EXPECT_EQ(ring.uses, 1) << "once refused, the clock doesn't ask for the other accounts";
  AutoCheckAccounts(run.program);
  EXPECT_EQ(ring.uses, 1);
  ASSERT_EQ(run.platform.asked.size(), 6U);
  EXPECT_THAT(run.platform.asked[0].text, testing::AllOf(HasSubstr("30010 - "), HasSubstr("locked")));
  run.platform.asked.clear();

  CheckAllAccounts(run.program);
  EXPECT_EQ(ring.uses, 2);
  EXPECT_EQ(run.platform.passwordsAsked.size(), 3U);
  EXPECT_THAT(run.platform.asked, IsEmpty()) << "who enters none knows why";
  run.platform.enteredPassword = "wrong";
  CheckCurrentAccount(run.program);
  EXPECT_THAT(run.platform.asked.back().text, HasSubstr("30007 - "));
  run.platform.enteredPassword = "secret of One";
  CheckCurrentAccount(run.program);
  run.platform.enteredPassword.reset();
  EXPECT_TRUE(run.reached(1)) << "a wrong one is asked for again";
  AutoCheckAccounts(run.program);
  EXPECT_TRUE(run.reached(1)) << "and holds for this run";
  EXPECT_EQ(disk.at("AcntPassword", 1) + run.program.accounts[1].AcntPassword, "") << "but isn't stored";

  ring.refusal.reset();
  CheckAllAccounts(run.program);
  EXPECT_TRUE(run.reached(2) && run.reached(3));
  const int uses = ring.uses;
  AutoCheckAccounts(run.program);
  EXPECT_EQ(ring.uses, uses) << "what was read stays in memory";
}

TEST(KeyringPage, ShowsAndReplacesWhatTheKeyringHolds) {
  Disk disk = plainDisk();
  ProgramRun(disk).choose(1);
  ProgramRun run(disk);
  MainWindow& page = run.showAccounts();
  const auto notice = [&page] { return page.lblAcntPasswordNotice.Caption.get(); };
  const auto save = [&page] { page.tbrButtons[saveAccountBar]["SaveAccount"].click(); };
  for (const auto* typed : {"", "n", ""}) {
    page.txtAcntPassword.Text = typed;
    EXPECT_EQ(notice(), *typed == '\0' ? heldByKeyring : "");
    EXPECT_EQ(run.program.unsaved.AcntDirty, *typed != '\0');
  }
  page.txtAcntLoginID.Text = "other";
  save();
  EXPECT_EQ(run.platform.ring.uses, 0) << "nothing was typed";
  page.txtAcntLoginID.Text = "One";
  AutoCheckAccounts(run.program);
  EXPECT_EQ(page.txtAcntPassword.Text.get(), "secret of One") << "in the middle of a change";
  EXPECT_EQ(notice(), "");
  page.txtAcntLoginID.Text = "other";
  EXPECT_FALSE(run.program.unsaved.AcntDirty);
  const std::string key = disk.at("AcntKeyringKey", 1);
  run.platform.ring.refusal = {.outcome = Outcome::Refused};
  page.txtAcntPassword.Text = "new";
  save();
  EXPECT_THAT(run.platform.asked.back().text, HasSubstr("The Account was not saved."));
  EXPECT_TRUE(run.program.unsaved.AcntDirty);
  EXPECT_EQ(disk.at("AcntKeyringKey", 1), key);
  run.platform.ring.refusal.reset();
  save();
  EXPECT_NE(disk.at("AcntKeyringKey", 1), key);
  EXPECT_EQ(disk.entries[disk.at("AcntKeyringKey", 1)], "new");
  page.txtAcntPassword.Text = "";
  save();
  EXPECT_EQ(disk.at("AcntKeyringKey", 1) + disk.at("AcntPassword", 1), "");
  EXPECT_EQ(disk.entries.size(), 2U);
  page.tbrMoveButtons["Forward"].click();
  EXPECT_EQ(PasswordOf(run.program, 1), "secret of Two");
}

TEST(KeyringMoves, TakeNoOtherWayWhileTheyWait) {
  Disk disk = plainDisk();
  ProgramRun run(disk);
  run.platform.ring.onUse = [&run] {
    EXPECT_FALSE(run.program.frmMain.fraOptionsPage.Enabled || run.program.frmMain.fraMainButtons.Enabled);
    if (run.platform.ring.uses == 1) run.program.frmMain.mnuTrayAutoCheck.Click();
    if (run.platform.ring.uses == 2) EndApplication(run.program);
    if (run.platform.ring.uses == 3) run.platform.ring.refusal = {.outcome = Outcome::Refused};
  };
  run.choose(1);
  EXPECT_EQ(disk.settings["Settings\\Options/UseKeyring"], "0");
  EXPECT_EQ(disk.settings["Settings\\Options/UseInterval"], "1");
  expectNothingLost(disk);
}

}  // namespace
}  // namespace velmora
