#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QProgressBar>
#include <QTabBar>
#include <QToolTip>

#include "checking/check_cycle.h"
#include "desktop/opened_window.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/tips.h"

namespace velmora {
namespace {

using test::message;

class Window : public test::OpenedWindow {
 protected:
  void type(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }

  /// The text of the tip that is on the screen, once there is one.
  static QString tip() {
    return QTest::qWaitFor([] { return QToolTip::isVisible(); }) ? QToolTip::text() : QString();
  }
  static void restPointerOn(QWidget& widget, const QPoint& at) {
    QHelpEvent event(QEvent::ToolTip, at, widget.mapToGlobal(at));
    QApplication::sendEvent(&widget, &event);
  }
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
  openOn({message("one"), message("two"), message("three")});
  auto& preview = find<QToolButton>("EmailPreview");
  EXPECT_FALSE(preview.isEnabled());
  clickAt(middleOf(1));
  EXPECT_TRUE(preview.isEnabled());
  EXPECT_EQ(program.list.SelectedMessage, 2);
  QTest::keyClick(&list(), Qt::Key_Down);
  EXPECT_EQ(program.list.SelectedMessage, 3);
  QTest::mouseDClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(0));
  EXPECT_TRUE(preview_->isVisible());
  preview_->close();
  clickAt(QPoint(20, list().viewport()->height() - 5));
  EXPECT_FALSE(preview.isEnabled());
  EXPECT_TRUE(list().selectionModel()->selectedRows().isEmpty());
  clickAt(middleOf(0));
  clickAt(middleOf(2), Qt::ControlModifier);
  EXPECT_TRUE(program.frmMain.lvwEmail.IsSelected(1));
  EXPECT_TRUE(program.frmMain.lvwEmail.IsSelected(3));
  const QPoint beside(20, list().viewport()->height() - 5);
  clickAt(beside, Qt::ControlModifier);
  EXPECT_TRUE(list().selectionModel()->selectedRows().isEmpty()) << "beside the rows nothing stays selected";
  QTest::mousePress(list().viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(1));
  for (const QPoint& at : {middleOf(2), beside}) {
    QMouseEvent drag(QEvent::MouseMove, at, list().viewport()->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(list().viewport(), &drag);
  }
  QTest::mouseRelease(list().viewport(), Qt::LeftButton, Qt::NoModifier, beside);
  EXPECT_EQ(list().selectionModel()->selectedRows().size(), 2);
  EXPECT_TRUE(preview.isEnabled()) << "a drag is judged by what it has selected";
  press("EmailCheck");
  EXPECT_TRUE(list().selectionModel()->selectedRows().isEmpty());
  EXPECT_FALSE(preview.isEnabled());
}

TEST_F(Window, TheRightButtonOpensTheMenu) {
  openOn({message("one")});
  QTest::mouseMove(list().viewport(), middleOf(0, 3));
  QTest::mousePress(list().viewport(), Qt::RightButton, Qt::NoModifier, middleOf(0, 3));
  QContextMenuEvent event(QContextMenuEvent::Mouse, middleOf(0, 3), list().viewport()->mapToGlobal(middleOf(0, 3)));
  QApplication::sendEvent(list().viewport(), &event);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->actions().front()->text(), "&Preview");
  EXPECT_TRUE(menu->actions().front()->isEnabled());
  menu->close();
  QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(), QCursor::pos());
  QApplication::sendEvent(list().viewport(), &byKey);
  const QRect row = list().visualRect(list().model()->index(0, 0));
  EXPECT_EQ(menu->pos(), list().viewport()->mapToGlobal(row.bottomLeft())) << "at the row, not at the pointer";
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

TEST_F(Window, TimersTickByThemselves) {
  auto& server = addAccount("Work");
  server.messages = {message("one")};
  option("EmailCheckStartUp", "1");
  std::optional<bool> turned;
  server.line.onReceive = [&] {
    if (!turned) turned = QTest::qWaitFor([this] { return tabImage(1).starts_with("MailSpin"); });
  };
  open();
  EXPECT_TRUE(QTest::qWaitFor([this] { return list().model()->rowCount() == 1; })) << "the check at start-up";
  EXPECT_EQ(turned, true) << "the picture of the account that is checked";
  platform.clock.minute = 22;
  EXPECT_TRUE(QTest::qWaitFor([&] { return find<QLabel>("StatusBar5").text() == "Nov 15/26 4:22 PM"; }));
}

TEST_F(Window, AQuestionKeepsItOnTheScreen) {
  addAccount("Work");
  open();
  QDialog question(view_.get());
  question.setModal(true);
  question.show();
  view_->showMinimized();
  EXPECT_TRUE(QTest::qWaitFor([this] { return !view_->isMinimized(); })) << "else nobody could answer any more";
  EXPECT_TRUE(program.frmMain.State == WindowState::Normal);
  EXPECT_TRUE(question.isVisible());
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

TEST_F(Window, TheKeyboardAloneDoesEverything) {
  addAccount("Work").messages = {message("one"), message("two"), message("three")};
  open();
  QTest::keyClick(&list(), Qt::Key_C, Qt::ControlModifier);  // there is nothing to copy
  type(Qt::Key_F5);
  ASSERT_EQ(list().model()->rowCount(), 3);
  type(Qt::Key_Down);
  EXPECT_TRUE(list().hasFocus()) << "keys that nothing else wants are the list's";
  EXPECT_EQ(program.list.SelectedMessage, 1);
  type(Qt::Key_End);
  EXPECT_EQ(program.list.SelectedMessage, 3);
  type(Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_EQ(program.list.SelectedMessage, 2);
  EXPECT_TRUE(program.frmMain.lvwEmail.IsSelected(3));
  type(Qt::Key_Return);
  ASSERT_TRUE(isActive(*preview_));
  QTest::keyClick(preview_, Qt::Key_Escape);
  EXPECT_FALSE(preview_->isVisible());
  view_->activateWindow();
  ASSERT_TRUE(isActive(*view_));
  platform.answers = {Answer::Yes};
  QTest::keyClick(&list(), Qt::Key_Delete);
  EXPECT_EQ(platform.servers["Work"].messages.size(), 1U);
  for (const auto& [key, page] : {std::pair{Qt::Key_2, "Accounts"}, {Qt::Key_3, "Rules"}, {Qt::Key_4, "Options"}}) {
    QTest::keyClick(view_.get(), key, Qt::ControlModifier);
    EXPECT_EQ(find<QLabel>("lblBanner").text(), page);
  }
  QTest::keyClick(view_.get(), Qt::Key_F1);
  EXPECT_EQ(platform.helpShown, std::vector<int>{210});
  const int logins = platform.servers["Work"].logins;
  QTest::keyClick(view_.get(), Qt::Key_R, Qt::ControlModifier);
  EXPECT_EQ(platform.servers["Work"].logins, logins + 1) << "from any page";
  QTest::keyClick(view_.get(), Qt::Key_Escape);
  EXPECT_FALSE(program.connection.StopRequested) << "nothing runs that could be stopped";
}

TEST_F(Window, TheKeyboardsFocusStaysWhereItIsBrought) {
  openOn({message("one")});
  list().setFocus(Qt::TabFocusReason);
  QCoreApplication::processEvents();
  EXPECT_TRUE(list().hasFocus());
  find<QToolButton>("CheckAll").setFocus();
  list().setFocus(Qt::OtherFocusReason);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !list().hasFocus(); })) << "the pointer is elsewhere";
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_NE(QApplication::focusWidget()->objectName(), "cmdTakeFocus");
}

TEST_F(Window, AHeaderSorts) {
  openOn({message("b"), message("a"), message("c")});
  const auto clickHeader = [this] {
    QHeaderView& header = *list().header();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(header.sectionViewportPosition(2) + 20, header.height() / 2));
  };
  clickHeader();
  EXPECT_EQ(shown(0, 2), "c");
  clickHeader();
  EXPECT_EQ(shown(0, 2), "a");
  EXPECT_EQ(list().model()->headerData(2, Qt::Horizontal, Qt::AccessibleTextRole), "Subject, sorted ascending");
  QTest::keyClick(view_.get(), Qt::Key_3, Qt::AltModifier);
  EXPECT_EQ(shown(0, 2), "c");
  list().setColumnWidth(1, 321);
  QTest::keyClick(view_.get(), Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(list().columnWidth(1), 200);
}

TEST_F(Window, ATipShowsExactlyWhatACellCutsOff) {
  openOn({message("one", "From: <b>Ann</b> Example <a@b.org>\r\nTo: a@b.org,c@d.org\r\n")});
  const int needed = program.frmMain.TextWidth("<b>Ann</b> Example <a@b.org>", true);
  const QModelIndex cell = list().model()->index(0, 0);
  // A tip belongs to a width where the style's own layout shortens the text, and to no other.
  for (const QString& style : {QString("Windows"), QApplication::style()->objectName()}) {
    QApplication::setStyle(style);
    for (int width = needed; width < needed + 40; ++width) {
      list().setColumnWidth(0, width);
      QToolTip::hideText();
      program.frmMain.lvwEmail.MouseMove(0, 5000);
      restPointerOn(*list().viewport(), middleOf(0, 0));
      const bool cut = width < list().sizeHintForIndex(cell).width();
      EXPECT_EQ(!program.frmMain.tipEmail.ToolText.get().empty(), cut) << style.toStdString() << width - needed;
    }
  }
  list().setColumnWidth(0, 100);
  program.frmMain.lvwEmail.MouseMove(0, 5000);
  restPointerOn(*list().viewport(), middleOf(0, 0));
  EXPECT_EQ(tip(), plainTip("<b>Ann</b> Example <a@b.org>")) << "no markup";
  EXPECT_TRUE(tip().contains("&lt;b&gt;"));
  EXPECT_LT(plainTip(std::string(100000, 'x')).size(), 2500) << "no tip fills the screen";
}

TEST_F(Window, HostileTextIsShownAsItIs) {
  openOn({{"u", "From: a\1b\r\nSubject: x\u202Efdp.exe " + std::string(20000, 'y') + "\r\n\r\n"}});
  EXPECT_EQ(shown(0, 0), "a\u2401b");
  EXPECT_EQ(shown(0, 2).left(2), "x\uFFFD");
  EXPECT_LE(shown(0, 2).size(), 1000);
}

TEST_F(Window, AnEmptyListSaysWhy) {
  addAccount("Work");
  open();
  EXPECT_TRUE(list().accessibleDescription().contains("not been checked yet"));
  const QImage before = list().viewport()->grab().toImage();
  press("EmailCheck");
  EXPECT_EQ(list().accessibleDescription(), "No messages wait on the server.");
  platform.servers["Work"].messages = {message("one")};
  press("EmailCheck");
  EXPECT_EQ(list().accessibleDescription(), "") << "it is not empty now";
  platform.servers["Work"].messages.clear();
  press("EmailCheck");
  EXPECT_NE(list().viewport()->grab().toImage(), before);
}

TEST_F(Window, APressByAScreenReaderReturnsBeforeItIsDone) {
  open();
  press("Options");
  platform.canStartPrograms = false;
  auto* update = QAccessible::queryAccessibleInterface(find<QWidget>("tbrOptAbout").findChild<QToolButton*>("Update"))
                     ->actionInterface();
  update->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(platform.asked.empty());
  QCoreApplication::processEvents();
  EXPECT_THAT(titles(), testing::ElementsAre("Velmora - Nothing to Open With"));
}

TEST_F(Window, AfterACheckTheKeyboardIsWhereItWas) {
  addAccount("Work");
  open();
  auto& button = find<QToolButton>("EmailCheck");
  button.setFocus(Qt::TabFocusReason);
  type(Qt::Key_Space);
  EXPECT_EQ(program.accounts[1].AcntLastCheckText, "Checked at: 4:21 PM");
  EXPECT_TRUE(QTest::qWaitFor([&] { return button.hasFocus(); }));
  press("Accounts");
  auto& server = find<QLineEdit>("txtAcntServer");
  server.setFocus();
  type(Qt::Key_X);
  AutoCheckAccounts(program);
  EXPECT_TRUE(QTest::qWaitFor([&] { return server.hasFocus(); }));
  type(Qt::Key_Y);
  EXPECT_EQ(server.text(), "xyWork") << "what stood there is not taken for something to write over";
}

}  // namespace
}  // namespace velmora
