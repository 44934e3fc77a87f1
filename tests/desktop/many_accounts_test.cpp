#include <gmock/gmock.h>

#include <QTabBar>

#include "desktop/opened_window.h"
#include "platform/qt/strings.h"

namespace velmora {
namespace {

constexpr std::int16_t fifty = 50;

/// The pages that have a strip, and its name.
constexpr std::pair<const char*, const char*> strips[] = {{"Email", "TabStripEmail"}, {"Accounts", "TabStripAcnts"}};

std::string nameOf(int number) { return "Account " + std::to_string(number); }

class ManyAccounts : public test::OpenedWindow {
 protected:
  void SetUp() override {
    OpenedWindow::SetUp();
    for (int number = 1; number <= fifty; ++number) addAccount(nameOf(number));
  }

  QTabBar& strip(const std::pair<const char*, const char*>& each) {
    press(each.first);
    QCoreApplication::processEvents();
    return find<QTabBar>(each.second);
  }

  static QToolButton& arrow(const QTabBar& bar, const char* name) {
    auto* found = bar.findChild<QToolButton*>(name);
    EXPECT_TRUE(found != nullptr && found->isVisible());
    return *found;
  }
  static QToolButton& leftArrow(const QTabBar& bar) { return arrow(bar, "ScrollLeftButton"); }
  static QToolButton& rightArrow(const QTabBar& bar) { return arrow(bar, "ScrollRightButton"); }

  /// As a whole, and not beneath an arrow.
  static bool isInSight(const QTabBar& bar, int number) {
    QCoreApplication::processEvents();
    const QRect tab = bar.tabRect(number - 1);
    return tab.left() >= 0 && tab.right() < leftArrow(bar).x();
  }

  void hold(QTabBar& bar, const QPoint& at) {
    QTest::mousePress(&bar, Qt::LeftButton, Qt::NoModifier, at);
    program.frmMain.tmrDragTab.tick();
  }
  static void drop(QTabBar& bar, const QPoint& at) { QTest::mouseRelease(&bar, Qt::LeftButton, Qt::NoModifier, at); }

  std::int16_t current() const { return program.accounts.AcntCurrent; }
  const std::string& nameAt(int number) { return program.accounts[static_cast<std::int16_t>(number)].AcntName; }
};

TEST_F(ManyAccounts, HaveTheSelectedTabInSight) {
  open();
  for (int number = 1, step = 0; step < fifty; ++step, number = number * 3 % 53 % fifty + 1) {
    strip(strips[step % 2]).setCurrentIndex(number - 1);
    for (const auto& each : strips) EXPECT_TRUE(isInSight(strip(each), number)) << each.second << number;
    EXPECT_EQ(current(), number);
  }
  auto& bar = strip(strips[0]);
  bar.setCurrentIndex(29);
  view_->resize(view_->width() + 333, view_->height());
  EXPECT_TRUE(isInSight(bar, 30));
  view_->resize(view_->width() - 333, view_->height());
  EXPECT_TRUE(isInSight(bar, 30));
  for (int number = 1; number <= 30; ++number) program.frmMain.TabStripEmail.Tabs(number).Caption = "Longer  (999)";
  EXPECT_TRUE(isInSight(bar, 30));
  auto& accounts = strip(strips[1]);
  press("AcntAdd");
  EXPECT_TRUE(isInSight(accounts, fifty + 1));
  platform.answers.assign(fifty, Answer::Yes);
  for (int left = fifty; left > 20; --left) {
    press("AcntDelete");
    EXPECT_TRUE(isInSight(accounts, left)) << left;
  }
}

TEST_F(ManyAccounts, AreDraggedAsFarAsTheArrowsScroll) {
  open();
  for (const auto& each : strips) {
    auto& bar = strip(each);
    bar.setCurrentIndex(0);
    const std::string moved = nameAt(1);
    hold(bar, bar.tabRect(0).center());
    QCursor::setPos(rightArrow(bar).mapToGlobal(QPoint(5, 5)));
    ASSERT_TRUE(QTest::qWaitFor([&bar] { return bar.tabRect(4).right() < 0; })) << each.second;
    QCursor::setPos(view_->mapToGlobal(QPoint(0, 0)));
    const QPoint middle(bar.width() / 2, bar.height() / 2);
    const int target = bar.tabAt(middle) + 1;
    const std::string other = nameAt(target);
    drop(bar, middle);
    EXPECT_EQ(current(), target);
    EXPECT_EQ(nameAt(target), moved);
    EXPECT_EQ(nameAt(1), other);
    EXPECT_TRUE(isInSight(bar, target));
    for (const auto& [page, name] : strips) {
      EXPECT_EQ(find<QTabBar>(name).tabText(0), qt(other)) << name;
      EXPECT_EQ(find<QTabBar>(name).currentIndex(), target - 1) << name;
    }
    hold(bar, bar.tabRect(target - 1).center());
    drop(bar, rightArrow(bar).geometry().center());
    EXPECT_EQ(nameAt(target), moved) << "an arrow is no tab";
  }
}

TEST_F(ManyAccounts, AndTheirFieldsAreReachedByTheKeyboard) {
  open();
  auto& bar = strip(strips[1]);
  bar.setFocus(Qt::TabFocusReason);
  for (int number = 2; number < fifty; ++number) {
    QTest::keyClick(&bar, Qt::Key_Right);
    ASSERT_EQ(current(), number);
  }
  std::set<std::string> reached;
  for (int keys = 0; keys < 60; ++keys) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    reached.insert(utf8(QApplication::focusWidget()->objectName()));
  }
  for (const auto* name : {"TabStripAcnts", "AcntAdd", "AcntDelete", "AcntTest", "Backward", "Forward",
                           "chkAcntEnabled", "txtAcntName", "txtAcntServer", "chkAcntSecure", "txtAcntPort",
                           "txtAcntLoginID", "txtAcntPassword", "Colour", "txtAcntClient", "txtAcntSound"}) {
    EXPECT_TRUE(reached.contains(name)) << name;
  }
}

}  // namespace
}  // namespace velmora
