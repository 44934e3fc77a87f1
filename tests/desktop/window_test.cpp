#include <gmock/gmock.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QTabBar>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include "platform/qt/main_window_view.h"
#include "platform/qt/strings.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::message;

/// The real window over the program, whose servers live in memory.
class Window : public test::RunningProgram {
 protected:
  void SetUp() override {
    platform.onYield = [] { QCoreApplication::processEvents(); };
  }

  void open() {
    view_ = std::make_unique<MainWindowView>(program.frmMain);
    start();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(view_.get()));
  }

  template <class Widget>
  Widget& find(const QString& name) {
    auto* widget = view_->findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name.toStdString();
    return *widget;
  }

  void press(const QString& button) { QTest::mouseClick(&find<QToolButton>(button), Qt::LeftButton); }
  QTreeView& list() { return find<QTreeView>("lvwEmail"); }
  QString shown(int row, int column) { return list().model()->index(row, column).data().toString(); }

  void clickAt(const QPoint& at, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseMove(list().viewport(), at);
    QTest::mouseClick(list().viewport(), button, Qt::NoModifier, at);
  }
  QPoint middleOf(int row) { return list().visualRect(list().model()->index(row, 0)).center(); }

  std::unique_ptr<MainWindowView> view_;
};

TEST_F(Window, ShowsWhatACheckFound) {
  addAccount("A & B").messages = {message("one"), message("two", "From: x@example.org\r\nAttachments: 2\r\n")};
  addAccount("Off", false);
  open();
  EXPECT_EQ(view_->windowTitle(), "Velmora");
  press("CheckAll");
  EXPECT_EQ(list().model()->rowCount(), 2);
  EXPECT_EQ(shown(0, 2), "one");
  EXPECT_TRUE(list().model()->index(0, 0).data(Qt::FontRole).value<QFont>().bold());
  EXPECT_FALSE(list().model()->index(1, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
  auto& tabs = find<QTabBar>("TabStripEmail");
  EXPECT_EQ(tabs.tabText(0), "A && B  (2)") << "an ampersand in a name is no shortcut";
  EXPECT_FALSE(tabs.tabIcon(0).isNull());
  EXPECT_EQ(find<QLabel>("StatusBar1").text(), "A & B - 2 Messages");
  EXPECT_EQ(find<QLabel>("StatusBar5").text(), "Nov 15/26 4:21 PM");
  tabs.setCurrentIndex(1);
  EXPECT_EQ(list().model()->rowCount(), 0);
  EXPECT_EQ(find<QLabel>("StatusBar1").text(), "Off");
}

TEST_F(Window, EveryControlSaysWhatItIs) {
  addAccount("Work");
  open();
  EXPECT_EQ(list().accessibleName(), "Messages");
  for (auto* button : view_->findChildren<QToolButton*>()) {
    if (button->objectName().startsWith("Scroll")) continue;
    EXPECT_FALSE(button->accessibleName().isEmpty()) << button->objectName().toStdString();
    EXPECT_EQ(button->accessibleName(), button->accessibleName().trimmed());
    EXPECT_FALSE(button->icon().isNull()) << button->objectName().toStdString();
    EXPECT_FALSE(button->toolTip().isEmpty());
  }
}

TEST_F(Window, ClicksAndKeysChooseMessages) {
  addAccount("Work").messages = {message("one"), message("two"), message("three")};
  open();
  press("EmailCheck");
  auto& preview = find<QToolButton>("EmailPreview");
  EXPECT_FALSE(preview.isEnabled());
  clickAt(middleOf(1));
  EXPECT_TRUE(preview.isEnabled());
  EXPECT_EQ(program.SelectedMessage, 2);
  QTest::keyClick(&list(), Qt::Key_Down);
  EXPECT_EQ(program.SelectedMessage, 3);
  clickAt(QPoint(20, list().viewport()->height() - 5));
  EXPECT_FALSE(preview.isEnabled());
  EXPECT_TRUE(list().selectionModel()->selectedRows().isEmpty());
  QTest::mouseMove(list().viewport(), middleOf(0));
  QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(0));
  QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::ControlModifier, middleOf(2));
  EXPECT_TRUE(program.frmMain.lvwEmail.IsSelected(1));
  EXPECT_TRUE(program.frmMain.lvwEmail.IsSelected(3));
  press("EmailCheck");
  EXPECT_TRUE(list().selectionModel()->selectedRows().isEmpty());
  EXPECT_FALSE(preview.isEnabled());
}

TEST_F(Window, TheRightButtonOpensTheMenu) {
  addAccount("Work").messages = {message("one")};
  open();
  press("EmailCheck");
  QTest::mouseMove(list().viewport(), middleOf(0));
  QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(0));
  QContextMenuEvent event(QContextMenuEvent::Mouse, middleOf(0), list().viewport()->mapToGlobal(middleOf(0)));
  QApplication::sendEvent(list().viewport(), &event);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->actions().front()->text(), "&Preview");
  EXPECT_TRUE(menu->actions().front()->isEnabled());
  menu->close();
}

TEST_F(Window, StaysAliveDuringACheck) {
  auto& server = addAccount("Work");
  server.messages = {message("one"), message("two")};
  server.line.chunk = 25;
  server.line.pace = pop::Milliseconds(60);
  open();
  bool seen = false;
  server.line.onReceive = [&] {
    QCoreApplication::processEvents();
    if (seen || !panel(4).starts_with("Retrieving")) return;
    seen = true;
    EXPECT_TRUE(find<QProgressBar>("ProgressBar").isVisible());
    EXPECT_FALSE(find<QToolButton>("CheckAll").isEnabled());
    EXPECT_FALSE(find<QTabBar>("TabStripEmail").isEnabled());
    EXPECT_TRUE(find<QToolButton>("StopRetrieval").isVisible());
    press("StopRetrieval");
  };
  press("CheckAll");
  ASSERT_TRUE(seen);
  EXPECT_EQ(find<QLabel>("StatusBar1").text(), "Work - User Stopped Retrieval");
  EXPECT_TRUE(find<QToolButton>("CheckAll").isEnabled());
  EXPECT_FALSE(find<QToolButton>("StopRetrieval").isVisible());
  EXPECT_FALSE(find<QProgressBar>("ProgressBar").isVisible());
}

TEST_F(Window, TheClockTicksByItself) {
  addAccount("Work");
  open();
  platform.clock.minute = 22;
  EXPECT_TRUE(QTest::qWaitFor([&] { return find<QLabel>("StatusBar5").text() == "Nov 15/26 4:22 PM"; }));
}

TEST_F(Window, SwitchesPagesAndShowsTheBannerWithoutAccounts) {
  open();
  EXPECT_TRUE(find<QLabel>("lblNoAcntsBanner").isVisible());
  for (const auto* page : {"Accounts", "Rules", "Options"}) {
    press(page);
    EXPECT_EQ(find<QLabel>("lblBanner").text(), page);
    EXPECT_FALSE(list().isVisible());
  }
  EXPECT_FALSE(find<QLabel>("lblNoAcntsBanner").isVisible());
  press("Email");
  EXPECT_TRUE(list().isVisible());
}

TEST_F(Window, ClosingKeepsTheProgramAndQuitEndsIt) {
  addAccount("Work");
  open();
  view_->close();
  EXPECT_FALSE(platform.hasQuit);
  EXPECT_TRUE(view_->isMinimized()) << "nothing else could bring it back";
  view_->showNormal();
  EXPECT_TRUE(program.frmMain.Visible);
  press("Quit");
  EXPECT_TRUE(platform.hasQuit);
}

TEST_F(Window, SizeRestoresTheDesignSizeAndTheListsWidthsAreKept) {
  addAccount("Work");
  open();
  const QSize design = view_->size();
  view_->resize(design + QSize(100, 80));
  press("Size");
  EXPECT_EQ(view_->size(), design);
  list().setColumnWidth(1, 321);
  EXPECT_EQ(program.frmMain.lvwEmail.Columns[1].Width.get(), 321);
}

TEST_F(Window, ThirtyThousandRowsCostTheScreenNothing) {
  addAccount("Work");
  open();
  std::vector<ListView::Row> rows(30000, {{"From", "To", "Subject", "Date", "1 KB"}, "New", true});
  QElapsedTimer time;
  time.start();
  program.frmMain.lvwEmail.SetRows(std::move(rows));
  view_->grab();
  EXPECT_LT(time.elapsed(), 2000) << "painting asks for the rows in sight only";
}

}  // namespace
}  // namespace velmora
