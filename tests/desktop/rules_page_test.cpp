#include <gmock/gmock.h>

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QRadioButton>
#include <QSpinBox>
#include <QToolButton>
#include <QWheelEvent>
#include <set>

#include "desktop/opened_window.h"
#include "platform/qt/windows/rule_fits_view.h"

namespace velmora {
namespace {

using test::message;

class RulesOnScreen : public test::OpenedWindow {
 protected:
  void openRules(int count) {
    std::string file = "[Rules]\nRuleCount=" + std::to_string(count) + "\nShow=1\n";
    for (int i = 1; i <= count; ++i) {
      const std::string number = std::to_string(i);
      file += "[Rule" + number + "]\nName=Rule " + number + "\nAccount=Gone\nAction=7\nDescCount=1\n";
      file += "Description1=From Contains example.org\n";
    }
    platform.written["/home/Rules.ini"] = file;
    openOn({message("one"), message("two", "From: x@y.net\r\n")});
    press("Rules");
  }

  QWidget& focused(const QString& name) {
    auto& widget = find<QWidget>(name);
    widget.setFocus(Qt::TabFocusReason);
    return widget;
  }

  RulesPage& page() { return program.frmMain; }
};

TEST_F(RulesOnScreen, TheKeyboardGoesWhereItsNextPressDoesNoHarm) {
  openRules(2);
  const std::tuple<const char*, const char*, const char*> buttons[] = {{"tbrMoveRule", "Down", "lstRules"},
                                                                       {"tbrRuleUpdate1", "Undo", "cboWhere"},
                                                                       {"tbrButtons10", "Cancel", "lstRules"}};
  for (const auto& [bar, key, heir] : buttons) {
    auto* button = find<QWidget>(bar).findChild<QToolButton*>(key);
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_FALSE(button->isEnabled());
    EXPECT_TRUE(find<QWidget>(heir).hasFocus()) << key;
    const bool unsaved = program.unsaved.RulesDirty;
    QTest::keyClick(heir == std::string("lstRules") ? &find<QWidget>(heir) : button, Qt::Key_Space);
    EXPECT_EQ(program.unsaved.RulesDirty, unsaved) << "one press too many";
  }
  find<QLineEdit>("txtCriteria").insert("copied\r\nwith its end\r\n");
  EXPECT_EQ(page().txtCriteria.Text.get(), "copied with its end example.org");
}

TEST_F(RulesOnScreen, ANumberIsCorrectedWhileItIsTyped) {
  openRules(1);
  auto& box = find<QSpinBox>("txtRuleNotifyTime");
  auto& text = *box.findChild<QLineEdit*>();
  box.setFocus();
  const struct {
    std::int16_t before;
    int cursor;  // -1: all is selected
    const char* typed;
    const char* shown;
    int cursorAfter;
  } cases[] = {
      {30, -1, "3", "3", 1},   {30, -1, "60", "59", 2}, {45, 1, "9", "59", 2},   {5, 0, "0", "5", 1},
      {7, 1, "\b", "1", -1},   {7, 1, "\b4", "4", 1},   {1, 1, "\b", "1", -1},   {30, 1, "x", "30", 1},
      {30, -1, "-", "30", -1}, {100, 3, "", "100", 3},  {100, 3, "\b", "10", 2}, {100, 3, "0", "59", 2},
  };
  for (const auto& each : cases) {
    page().txtRuleNotifyTime.Value = each.before;
    each.cursor < 0 ? text.selectAll() : text.setCursorPosition(each.cursor);
    for (const char* key = each.typed; *key != '\0'; ++key) {
      *key == '\b' ? QTest::keyClick(&box, Qt::Key_Backspace) : QTest::keyClick(&box, *key);
    }
    EXPECT_EQ(text.text(), each.shown) << each.before << each.typed;
    EXPECT_EQ(std::to_string(page().txtRuleNotifyTime.Value.get()), each.shown);
    EXPECT_EQ(text.hasSelectedText() ? -1 : text.cursorPosition(), each.cursorAfter) << each.before << each.typed;
  }
  page().txtRuleNotifyTime.Value = std::int16_t{100};
  for (const auto& [key, value] : {std::pair{Qt::Key_Up, 100}, {Qt::Key_Down, 59}, {Qt::Key_Up, 59}}) {
    QTest::keyClick(&box, key);
    EXPECT_EQ(page().txtRuleNotifyTime.Value.get(), value);
  }
  text.selectAll();
  text.insert("12 or so");
  EXPECT_EQ(text.text(), "59") << "what was pasted is no number";
}

TEST_F(RulesOnScreen, OnlyTheUserChooses) {
  openRules(1);
  int clicks = 0;
  page().cboRuleAccount.Click = page().optRuleAction.Click = [&clicks] { ++clicks; };
  auto& account = find<QComboBox>("cboRuleAccount");
  EXPECT_EQ(account.currentText(), "Gone") << "it is not in the list";
  page().cboRuleAccount.Text = "Work";
  EXPECT_EQ(account.count(), 2) << "nor is it any more";
  page().cboRuleAccount.List = std::vector<std::string>{"All Accounts", "A\tB", "Work"};
  EXPECT_EQ(account.currentText(), "Work");
  const QPointF middle = account.rect().center();
  QWheelEvent wheel(middle, account.mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&account, &wheel);
  page().cboRuleAccount.Text = "";
  EXPECT_EQ(account.currentIndex(), -1);
  page().cboRuleAccount.Text = "A\tB";
  ASSERT_EQ(clicks, 0);
  focused("cboRuleAccount");
  account.showPopup();
  QTest::keyClick(account.view(), Qt::Key_Return);
  EXPECT_EQ(clicks, 1) << "the same again";
  EXPECT_EQ(page().cboRuleAccount.Text.get(), "A\tB");
  QTest::keyClick(&account, 'W');
  EXPECT_EQ(clicks, 2);
  EXPECT_EQ(page().cboRuleAccount.Text.get(), "Work");
  for (int option = 1; option <= 3; ++option) {
    EXPECT_FALSE(find<QRadioButton>("optRuleAction" + QString::number(option)).isChecked()) << "7 is none of them";
  }
  page().optRuleAction.Value = std::int16_t{1};
  page().optRuleAction.Value = std::int16_t{0};
  EXPECT_FALSE(find<QRadioButton>("optRuleAction1").isChecked());
  EXPECT_EQ(clicks, 2);
  QTest::mouseClick(&find<QRadioButton>("optRuleAction2"), Qt::LeftButton, {}, QPoint(10, 10));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
  EXPECT_EQ(clicks, 4);
  EXPECT_EQ(page().optRuleAction.Value.get(), 3);
}

TEST_F(RulesOnScreen, RulesAreTickedAndChosenInTheList) {
  openRules(300);
  auto& rules = find<QListView>("lstRules");
  const auto click = [&](int row, int x) {
    const QRect place = rules.visualRect(rules.model()->index(row, 0));
    QTest::mouseClick(rules.viewport(), Qt::LeftButton, {}, QPoint(place.left() + x, place.center().y()));
  };
  click(1, 8);
  EXPECT_EQ(program.rules.CurrentRule, 2) << "what is ticked is chosen";
  EXPECT_EQ(program.rules.working[2].Enabled, 0);
  EXPECT_EQ(find<QGroupBox>("fraRule").title(), "Rule: Not Enabled");
  click(2, 60);
  EXPECT_EQ(program.rules.CurrentRule, 3);
  EXPECT_EQ(program.rules.working[3].Enabled, 1);
  QTest::keyClick(&rules, Qt::Key_Space);
  EXPECT_EQ(program.rules.working[3].Enabled, 0);
  rules.selectionModel()->select(rules.model()->index(4, 0), QItemSelectionModel::ClearAndSelect);
  EXPECT_EQ(program.rules.CurrentRule, 5) << "as a screen reader chooses";
  QTest::keyClick(&rules, Qt::Key_End);
  EXPECT_EQ(program.rules.CurrentRule, 300);
  platform.answers = {Answer::Yes};
  QTest::keyClick(&rules, Qt::Key_Delete);
  EXPECT_EQ(program.rules.CurrentRule, 299);
  EXPECT_EQ(rules.currentIndex().row(), 298);
  press("RulesAdd");
  EXPECT_TRUE(rules.viewport()->rect().contains(rules.visualRect(rules.currentIndex()))) << "it is scrolled to";
  int events = 0;
  page().lstRules.Click = [&events] { ++events; };
  page().lstRules.ItemCheck = [&events](std::int16_t) { ++events; };
  page().lstRules.SetItems({{"one", true}, {"two", false}});
  EXPECT_EQ(rules.model()->index(0, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
  page().lstRules.ListIndex = std::int16_t{2};
  QTest::mouseClick(rules.viewport(), Qt::LeftButton, {}, QPoint(20, rules.viewport()->height() - 5));
  EXPECT_TRUE(rules.selectionModel()->isSelected(rules.model()->index(1, 0)));
  EXPECT_EQ(events, 0);
}

TEST_F(RulesOnScreen, EveryInputIsReachedAndNamed) {
  openRules(3);
  page().lstRules.Choose(2);
  const std::vector<std::string> order = {"RulesAdd",
                                          "RulesDelete",
                                          "RulesImport",
                                          "RulesRename",
                                          "lstRules",
                                          "Up",
                                          "Down",
                                          "txtRuleName",
                                          "cboRuleAccount",
                                          "cboWhere",
                                          "cboCondition",
                                          "chkNot",
                                          "txtCriteria",
                                          "cboBoolean",
                                          "Update",
                                          "Clear",
                                          "Undo",
                                          "txtRuleDescription",
                                          "ShowFits",
                                          "optRuleAction2",
                                          "chkRuleNotify",
                                          "chkRuleNotifyNew",
                                          "txtRuleNotifyTime"};
  page().optRuleAction.Choose(2);
  page().cboRuleAccount.Choose("All Accounts");
  ASSERT_TRUE(QTest::qWaitFor([this] { return find<QToolButton>("ShowFits").isEnabled(); }));
  std::vector<std::string> reached;
  for (focused("RulesAdd"); reached.size() < order.size(); QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab)) {
    QWidget& input = *QApplication::focusWidget();
    reached.push_back(input.objectName().toStdString());
    EXPECT_FALSE(input.accessibleName().isEmpty() || input.accessibleName().contains('&')) << reached.back();
  }
  EXPECT_EQ(reached, order);
  for (const char* where : {"From", "Size", "Attachment"}) {
    page().cboWhere.Choose(where);
    std::multiset<QString> letters;
    for (const auto* label : find<QWidget>("fraMain2").findChildren<QLabel*>()) {
      if (label->buddy() != nullptr) letters.insert(QKeySequence::mnemonic(label->text()).toString());
    }
    for (const auto* button : find<QWidget>("fraMain2").findChildren<QAbstractButton*>()) {
      if (qobject_cast<const QToolButton*>(button) == nullptr) letters.insert(button->shortcut().toString());
    }
    EXPECT_EQ(letters.size(), 15U);
    EXPECT_EQ(std::set<QString>(letters.begin(), letters.end()).size(), letters.size()) << "a letter twice, or none";
    EXPECT_TRUE(letters.contains("Alt+E")) << where;
  }
}

TEST_F(RulesOnScreen, ARuleThatIsOffIsSeenOnEveryGround) {
  openRules(1);
  page().lstRules.Tick(1, false);
  auto& label = find<QLabel>("lblRuleDescription");
  const auto colour = [&label] { return label.palette().color(QPalette::Active, QPalette::WindowText); };
  EXPECT_EQ(colour(), QColor(192, 0, 0));
  view_->setPalette(QPalette(QColor(40, 40, 40)));
  EXPECT_GT(colour().lightness(), 120);
  EXPECT_GT(colour().red(), colour().green() + 40) << "still a red";
  const QImage title = find<QGroupBox>("fraRule").grab(QRect(0, 0, 200, label.height())).toImage();
  int reds = 0;
  for (int i = 0; i < title.width() * title.height(); ++i) {
    const QColor seen = title.pixelColor(i % title.width(), i / title.width());
    if (seen.red() > seen.green() + 40) ++reds;
  }
  EXPECT_GT(reds, 50);
  view_->setPalette(QPalette(Qt::white));
  EXPECT_EQ(colour(), QColor(192, 0, 0));
}

TEST_F(RulesOnScreen, WhatARuleFitsIsListed) {
  openRules(1);
  page().cboRuleAccount.Choose("All Accounts");
  auto* fits = new RuleFitsView(program.frmRuleFits, view_.get());  // NOLINT: its parent owns it
  ASSERT_TRUE(QTest::qWaitFor([this] { return find<QToolButton>("ShowFits").isEnabled(); }));
  EXPECT_EQ(find<QLabel>("lblRuleFits").text(), "This rule fits 1 of 2 messages in the lists.");
  press("ShowFits");
  ASSERT_TRUE(isActive(*fits));
  EXPECT_EQ(fits->findChild<QTreeView*>("lvwRuleFits")->model()->index(0, 2).data(), "one");
  QTest::keyClick(fits, Qt::Key_Escape);
  EXPECT_FALSE(fits->isVisible());
}

}  // namespace
}  // namespace velmora
