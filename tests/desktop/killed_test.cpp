#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QFile>

#include "app/pages.h"
#include "platform/qt/services/qt_settings.h"
#include "support/killed_child.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using Names = std::vector<std::string>;

/// Something that the user does, and the names of the accounts before it and afterwards.
struct Operation {
  std::string name;
  Names before;
  std::function<void(MainWindow&)> run;
  Names after;
};

auto deletion(int number) {
  return [number](MainWindow& window) {
    window.TabStripAcnts.SelectTab(number);
    window.tbrAcnts["AcntDelete"].click();
  };
}

void rename(MainWindow& window) {
  window.TabStripAcnts.SelectTab(2);
  window.txtAcntName.Text = "Bee";
  window.tbrButtons[saveAccountBar]["SaveAccount"].click();
}

void drag(MainWindow& window) {
  TabStrip& strip = window.TabStripAcnts;
  for (int tab = 1; tab <= strip.Count(); ++tab) strip.Tabs(tab).Width = 100;
  strip.BeforeClick();
  strip.MouseDown(MouseButton::Left, 50);
  window.tmrDragTab.tick();
  strip.DragDrop(250);
}

const Names four = {"A", "B", "C", "D"};
const Operation operations[] = {
    {"Add", four, [](auto& window) { window.tbrAcnts["AcntAdd"].click(); }, {"A", "B", "C", "D", "New Account1"}},
    {"Rename", four, rename, {"A", "Bee", "C", "D"}},
    {"DeleteFirst", four, deletion(1), {"B", "C", "D"}},
    {"DeleteMiddle", four, deletion(2), {"A", "C", "D"}},
    {"DeleteLast", four, deletion(4), {"A", "B", "C"}},
    {"DeleteOnly", {"A"}, deletion(1), {}},
    {"Forward", four, [](auto& window) { window.tbrMoveButtons["Forward"].click(); }, {"B", "A", "C", "D"}},
    {"Drag", four, drag, {"C", "B", "A", "D"}},
};

/// Every field tells whose it is.
Account accountOf(const std::string& name) {
  Account account;
  if (!name.starts_with("New")) {
    const std::string of = name.substr(0, 1);
    account = {0, name, of, 1, of, "u, \"" + of, of + "\n=;", of[0], of[0], of + "\\x", of + " ", 0};
  }
  account.AcntName = name;
  return account;
}

/// What a program that starts now finds, and can change.
void expectWhole(const Names& names) {
  QtSettings settings;
  Accounts accounts;
  const std::int16_t count = Accounts::storedCount(settings).count;
  ASSERT_EQ(count, static_cast<std::int16_t>(names.size()));
  accounts.ResizeAccounts(count);
  for (std::int16_t number = 1; number <= accounts.AcntNum(); ++number) {
    accounts.LoadAccount(settings, number);
    const Account expected = accountOf(names.at(static_cast<std::size_t>(number - 1)));
    for (const auto& field : accountFields()) {
      EXPECT_TRUE(isEqual<Account>(field, accounts[number], expected)) << number << field.key;
    }
  }
  settings.SaveSetting(settingsSection, "Probe", "1");
  settings.Keep();
  EXPECT_EQ(QtSettings().GetSetting(settingsSection, "Probe", ""), "1");
}

class Killed : public test::RunningProgram, public testing::WithParamInterface<Operation> {
 protected:
  void SetUp() override {
    const auto count = static_cast<std::int16_t>(GetParam().before.size());
    Accounts accounts;
    accounts.ResizeAccounts(count);
    for (std::int16_t number = 1; number <= count; ++number) {
      static_cast<Account&>(accounts[number]) = accountOf(GetParam().before[static_cast<std::size_t>(number - 1)]);
      Accounts::SaveAccountFields(settings_, number, accounts[number]);
    }
    settings_.SaveSetting(settingsSection, "AcntNum", std::to_string(count));
    platform.store = &settings_;
    platform.answers = {Answer::Yes};
    start();
    GoToPage(program, accountsPage);
    settings_.Keep();
  }
  void TearDown() override { QFile::remove(QtSettings::fileName()); }

  QByteArray content() const {
    QFile file(QtSettings::fileName());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  void write(const QByteArray& bytes) const {
    QFile file(QtSettings::fileName());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }

 private:
  QtSettings settings_;
};

TEST_P(Killed, LeavesAllAsItWasOrAllAsItIsToBe) {
  const QByteArray before = content();
  QByteArray after;
  int call = 0;
  for (bool isThrough = false; !isThrough; ++call) {
    write(before);
    isThrough = test::survives(call + 1, [this] { GetParam().run(program.frmMain); });
    const QByteArray left = content();
    const bool hasHappened = !after.isEmpty() || left != before;
    if (hasHappened && after.isEmpty()) after = left;
    EXPECT_TRUE(left == (hasHappened ? after : before)) << "a third state, before call " << call + 1;
    expectWhole(hasHappened ? GetParam().after : GetParam().before);
  }
  EXPECT_FALSE(after.isEmpty());
  EXPECT_GT(call, 5) << "there was something to be killed at";
}

INSTANTIATE_TEST_SUITE_P(Program, Killed, testing::ValuesIn(operations),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace velmora
