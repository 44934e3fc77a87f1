#include <gmock/gmock.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>
#include <QTimeEdit>
#include <QToolButton>
#include <set>

#include "options/client_and_sound.h"
#include "options/options_page.h"
#include "platform/qt/windows/options_page_view.h"

namespace velmora {
namespace {

/// The page alone, without anything that answers its events.
class OptionsOnScreen : public testing::Test {
 protected:
  void SetUp() override {
    view_ = makeOptionsPage(page_, bars_, &window_);
    view_->resize(910, 470);  // what the design size leaves to it
    window_.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  template <class Widget>
  Widget& find(const QString& name) {
    return *view_->findChild<Widget*>(name);
  }

  static void type(QAbstractSpinBox& box, const char* keys) {
    box.setFocus(Qt::TabFocusReason);
    QTest::keySequence(&box, QKeySequence(keys));
  }

  QWidget window_;
  OptionsPage page_;
  ClientAndSound bars_;
  QWidget* view_ = nullptr;
};

TEST_F(OptionsOnScreen, TheTreeFollowsAndTells) {
  auto& tree = find<QListWidget>("TreeView");
  std::vector<int> told;
  page_.TreeView.NodeClick = [&] { told.push_back(page_.TreeView.SelectedItem); };
  const auto click = [&](const QPoint& place, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, keys, place);
  };
  const auto middleOf = [&](int row) { return tree.visualItemRect(tree.item(row)).center(); };
  page_.TreeView.SelectedItem = std::int16_t{2};
  EXPECT_EQ(tree.currentRow(), 1);
  click(middleOf(3));
  QTest::keyClick(&tree, Qt::Key_Down);
  click(middleOf(4), Qt::ControlModifier);
  click(QPoint(10, tree.viewport()->height() - 5));
  EXPECT_EQ(told, (std::vector<int>{4, 5}));
  EXPECT_TRUE(tree.item(4)->isSelected());
  page_.TreeView.NodeClick = [&] { page_.TreeView.SelectedItem = std::int16_t{5}; };
  click(middleOf(0));
  EXPECT_TRUE(tree.item(4)->isSelected() && !tree.item(0)->isSelected()) << "the answer was to stay";
  window_.setFocus();
  view_->hide();
  page_.TreeView.SetFocus();
  EXPECT_FALSE(tree.hasFocus());
  view_->show();
  page_.TreeView.SetFocus();
  EXPECT_TRUE(tree.hasFocus());
}

TEST_F(OptionsOnScreen, ATimeIsTakenWhileItIsTyped) {
  auto& edit = find<QTimeEdit>("txtNoCheckTime0");
  const struct {
    const char *before, *keys, *after, *shown;
  } cases[] = {
      {"08:15", "Up", "09:15", "09:15"},
      {"23:59", "Up", "23:59", "23:59"},
      {"00:59", "Right, Up", "00:59", "00:59"},
      {"08:15", "1", "01:15", "1:15"},
      {"08:15", "1, 2, 4, 5", "12:45", "12:45"},
      {"08:15", "1, Right, 3, 0", "01:30", "01:30"},
      {"08:15", "Ctrl+A, 1, 2, :", "12:15", "12:15"},
      {"08:15", "2, 5", "02:15", "2:15"},
      {"no time", "x", "no time", "00:00"},
      {"99:99", "Right, 7", "00:07", "00:07"},
      {"7:5", "", "7:5", "00:00"},
  };
  for (const auto& each : cases) {
    page_.txtNoCheckTime[0].Text = "12:00";
    page_.txtNoCheckTime[0].Text = each.before;
    type(edit, each.keys);
    EXPECT_EQ(edit.text(), each.shown) << each.before << each.keys;
    EXPECT_EQ(page_.txtNoCheckTime[0].Text.get(), each.after) << each.keys;
    edit.clearFocus();
    EXPECT_EQ(page_.txtNoCheckTime[0].Text.get(), each.after) << each.keys << " and left";
  }
  auto& line = *edit.findChild<QLineEdit*>();
  page_.txtNoCheckTime[0].Text = "08:15";
  QTest::mouseClick(&line, Qt::LeftButton, {}, QPoint(line.width() - 4, line.height() / 2));
  EXPECT_EQ(line.selectedText(), "15");
}

TEST_F(OptionsOnScreen, ANumberFollowsItsBounds) {
  NumberBox& box = page_.txtMinutes;
  auto& edit = find<QSpinBox>("txtMinutes");
  const struct {
    std::int16_t least, most, before;
    bool takesZero;
    const char* keys;
    int after;
  } cases[] = {
      {0, 20, 30, false, "", 30},       {0, 20, 30, false, "Down", 20}, {1, 59, 5, false, "Ctrl+A, 0", 1},
      {1, 59, 5, true, "Ctrl+A, 0", 0}, {1, 59, 0, true, "Up", 1},      {1, 59, 1, true, "Down", 1},
      {1, 59, 5, true, "PgDown", 1},    {1, 59, 0, true, "Down", 0},    {0, 59, 1, false, "Down", 0},
  };
  for (const auto& each : cases) {
    box.Value = each.before;
    box.Least = each.least;
    box.Most = each.most;
    box.TakesZero = each.takesZero;
    type(edit, each.keys);
    EXPECT_EQ(box.Value.get(), each.after) << each.before << each.keys;
    EXPECT_EQ(edit.value(), each.after) << each.before << each.keys;
  }
}

TEST_F(OptionsOnScreen, WhatTheProgramSetsShows) {
  page_.chkQuickCheck.Value = std::int16_t{1};
  page_.chkQuickCheck.Value = std::int16_t{2};
  EXPECT_EQ(page_.chkQuickCheck.Value.get(), 2) << "which is the program's to mend";
  EXPECT_FALSE(find<QCheckBox>("chkQuickCheck").isChecked());
  page_.tbrOptMisc[0].Raised = true;
  EXPECT_FALSE(find<QToolButton>("SelectAll").autoRaise());
}

TEST_F(OptionsOnScreen, EverySectionFitsAndIsNamedAndReached) {
  const std::string text =
      "(Off)  Do not use an Auto Check Timing Interval. Checking must be done manually, again and again.";
  for (Label* label : {&page_.lblRunStartUp, &page_.lblEmailCheckStartUp, &page_.lblMinimizeStartUp,
                       &page_.lblUseInterval, &page_.lblPlaySound[0], &page_.lblPlaySound[1], &page_.lblMenuColours[0],
                       &page_.lblMenuColours[1], &page_.lblMenuColours[2]}) {
    label->Caption = text;
  }
  page_.lblTrayMenu.Visible = true;
  const std::size_t inputs[] = {4, 10, 11, 10, 19, 0, 7};
  for (std::size_t section = 0; section < sectionCount; ++section) {
    for (std::size_t other = 0; other < sectionCount; ++other) page_.fraOptions[other].Visible = other == section;
    QCoreApplication::processEvents();
    auto& frame = find<QScrollArea>(QStringLiteral("fraOptions%1").arg(section));
    EXPECT_EQ(frame.verticalScrollBar()->maximum() + frame.horizontalScrollBar()->maximum(), 0) << section;
    std::multiset<QString> letters;
    for (const auto* label : frame.findChildren<QLabel*>()) {
      if (label->buddy() != nullptr) letters.insert(QKeySequence::mnemonic(label->text()).toString());
    }
    for (const auto* button : frame.findChildren<QAbstractButton*>()) {
      EXPECT_FALSE(button->accessibleName().isEmpty()) << button->objectName().toStdString();
      if (!button->shortcut().isEmpty()) letters.insert(button->shortcut().toString());
    }
    EXPECT_EQ(letters.size(), inputs[section]);
    EXPECT_EQ(std::set<QString>(letters.begin(), letters.end()).size(), letters.size()) << "a letter twice, or none";
  }
}

}  // namespace
}  // namespace velmora
