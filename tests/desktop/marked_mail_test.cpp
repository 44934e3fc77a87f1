#include <gmock/gmock.h>

#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QWindow>

#include "desktop/opened_window.h"
#include "platform/qt/windows/rule_report_view.h"

namespace velmora {
namespace {

using test::message;

/// The real windows over accounts whose rules mark d for deletion and s as spam.
class MarkedMail : public test::OpenedWindow {
 protected:
  void openWith(const std::vector<std::string>& accounts) {
    platform.written["/home/Rules.ini"] =
        "[Rules]\nRuleCount=2\nShow=1\n"
        "[Rule1]\nAction=1\nDescCount=1\nDescription1=Subject Equals d\n"
        "[Rule2]\nAction=2\nDescCount=1\nDescription1=Subject Equals s\n";
    option("MessageSort", "0");
    for (const auto& name : accounts) {
      for (const auto* subject : {"d", "s", "k", "l"}) serverOf(name).messages.push_back(message(subject));
    }
    open();
    press("CheckAll");
  }

  template <class Widget>
  Widget& inReport(const char* name) {
    return *report_.findChild<Widget*>(name);
  }
  void pressInReport(const char* button) { QTest::mouseClick(&inReport<QToolButton>(button), Qt::LeftButton); }

  RuleReportView report_{program.frmRuleReport};

 private:
  test::MemoryServer& serverOf(const std::string& name) {
    return platform.servers.contains(name) ? platform.servers[name] : addAccount(name);
  }
};

TEST_F(MarkedMail, IsToldOfInASmallWindowAboveAllOthers) {
  openWith({"Home", "Work & Co"});
  ASSERT_TRUE(isActive(report_));
  EXPECT_EQ(report_.windowTitle(), "Velmora - Rule Report Notification");
  EXPECT_TRUE(report_.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
  EXPECT_TRUE(inReport<QLabel>("lblRuleDelete").isVisible());
  EXPECT_EQ(inReport<QLabel>("lblRuleDelete").text(), "Home has 1 message\r\nWork & Co has 1 message");
  EXPECT_EQ(inReport<QLabel>("lblRuleReportCountDown").text(), "30");
  EXPECT_TRUE(report_.screen()->availableGeometry().contains(report_.geometry()));
  auto* const scrolling = inReport<QScrollArea>("fraRuleReport").verticalScrollBar();
  EXPECT_EQ(scrolling->maximum(), 0) << "all lines have room";
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(onServer("Home").size(), 4U) << "keys that somebody goes on typing delete nothing";
  EXPECT_EQ(QTest::qWaitFor([this] { return inReport<QLabel>("lblRuleReportCountDown").text() == "29"; }), true);
  QTest::keyClick(&report_, Qt::Key_F1);
  EXPECT_EQ(platform.helpShown, std::vector<int>{150});
  inReport<QToolButton>("DeleteNow").setFocus();
  QTest::keyClick(&report_, Qt::Key_Escape);
  EXPECT_FALSE(report_.isVisible());
  EXPECT_FALSE(program.frmRuleReport.RuleReportOpen);
  press("CheckAll");
  ASSERT_TRUE(isActive(report_));
  EXPECT_TRUE(inReport<QTabBar>("TabStripRuleReport").hasFocus());
  report_.close();
  EXPECT_FALSE(program.frmRuleReport.RuleReportOpen);
}

TEST_F(MarkedMail, GrowsWithTheAccountsUpToABound) {
  std::vector<std::string> names;
  for (int i = 1; i <= 20; ++i) names.push_back("Account " + std::to_string(i));
  openWith(names);
  auto& area = inReport<QScrollArea>("fraRuleReport");
  EXPECT_TRUE(inReport<QLabel>("lblRuleDelete").text().endsWith("Account 15 has 1 message\r\n\r\nmore Accounts..."));
  EXPECT_EQ(area.verticalScrollBar()->maximum(), 0) << "what has no room is not there";
  EXPECT_GT(area.height(), 17 * area.fontMetrics().height());
  EXPECT_LT(area.height(), 20 * area.fontMetrics().lineSpacing());
}

TEST_F(MarkedMail, LeavesTheServerAtOnceWhenTheWindowSaysSo) {
  openWith({"Home", "Work"});
  inReport<QTabBar>("TabStripRuleReport").setCurrentIndex(1);
  EXPECT_EQ(inReport<QLabel>("lblRuleSpam").text(), "Home has 1 message\r\nWork has 1 message");
  inReport<QTabBar>("TabStripRuleReport").setCurrentIndex(0);
  pressInReport("DeleteNow");
  EXPECT_TRUE(platform.asked.empty());
  for (const auto* name : {"Home", "Work"}) EXPECT_THAT(onServer(name), testing::ElementsAre("s", "k", "l"));
  EXPECT_FALSE(inReport<QToolButton>("DeleteNow").isEnabled());
  EXPECT_EQ(inReport<QLabel>("lblRuleDelete").text(), "No Messages to Delete");
}

}  // namespace
}  // namespace velmora
