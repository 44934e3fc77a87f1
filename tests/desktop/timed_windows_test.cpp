#include <gmock/gmock.h>

#include <QGroupBox>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include "checking/check_cycle.h"
#include "desktop/opened_window.h"
#include "platform/qt/windows/check_message_view.h"
#include "platform/qt/windows/first_use_view.h"
#include "platform/qt/windows/rule_report_view.h"

namespace velmora {
namespace {

using test::message;

/// The real windows that tell of a timed check, and the one that welcomes.
class TimedWindows : public test::OpenedWindow {
 protected:
  template <class Widget>
  static Widget& in(QWidget& window, const char* name) {
    return *window.findChild<Widget*>(name);
  }

  CheckMessageView message_{program.frmMessage};
};

TEST_F(TimedWindows, TheMessageTellsAllInItsCornerAndClosesByItself) {
  platform.written["/home/Rules.ini"] =
      "[Rules]\nRuleCount=1\nShow=1\n[Rule1]\nAction=2\nDescCount=1\nDescription1=Subject Equals a\n";
  for (const auto* name : {"Home", "R & D", "Work"}) addAccount(name).messages = {message("a")};
  option("ShowEmailMsgBox", "1");
  option("MsgBoxTime", "1");
  option("UseInterval", "1");
  RuleReportView report(program.frmRuleReport);
  open();
  AutoCheckAccounts(program);
  ASSERT_TRUE(message_.isVisible());
  EXPECT_EQ(message_.windowTitle(), "Velmora:  Auto Check - November 15, 2026");
  EXPECT_EQ(in<QGroupBox>(message_, "fraMsg").title(), "3 New Message(s) found at 4:21 PM");
  EXPECT_EQ(in<QLabel>(message_, "lblMsg").text(),
            "Account Information:\n      Home - 1 Message\n      R & D - 1 Message\n      Work - 1 Message");
  EXPECT_EQ(in<QLabel>(message_, "lblAutoCheck").text(), "Next Auto Check at 4:51 PM");
  EXPECT_EQ(in<QScrollArea>(message_, "lines").verticalScrollBar()->maximum(), 0) << "all lines have room";
  EXPECT_TRUE(message_.screen()->availableGeometry().contains(message_.geometry()));
  ASSERT_TRUE(report.isVisible());
  EXPECT_FALSE(program.frmMessage.AlwaysOnTop) << "the report came last";
  EXPECT_FALSE(message_.frameGeometry().intersects(report.frameGeometry()));
  for (auto& [name, server] : platform.servers) server.messages.clear();
  program.accounts[1].AcntEnabled = program.accounts[2].AcntEnabled = 0;
  const int height = message_.height();
  AutoCheckAccounts(program);
  EXPECT_LT(message_.height(), height) << "two lines less";
  EXPECT_TRUE(QTest::qWaitFor([this] { return in<QLabel>(message_, "lblMsgCountDown").text() == "0"; }));
  EXPECT_TRUE(QTest::qWaitFor([this] { return !message_.isVisible(); }));
  EXPECT_FALSE(program.frmMessage.AutoMessageOpen);
}

TEST_F(TimedWindows, TheWelcomeIsReadWholeAndClosedByEsc) {
  view_ = std::make_unique<MainWindowView>(program.frmMain);
  auto* welcome = new FirstUseView(program.frmFirstUse, view_.get());  // NOLINT: its parent owns it
  start();
  ASSERT_TRUE(isActive(*welcome));
  EXPECT_EQ(welcome->windowTitle(), "Velmora - First Time Use");
  for (const auto* label : welcome->findChildren<QLabel*>("lblSteps")) {
    EXPECT_GE(label->height(), label->heightForWidth(label->width())) << label->text().toStdString();
  }
  QTest::keyClick(welcome, Qt::Key_Escape);
  EXPECT_FALSE(program.frmFirstUse.FirstUseOpen);
}

}  // namespace
}  // namespace velmora
