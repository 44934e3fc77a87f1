#include <gmock/gmock.h>

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTest>

#include "platform/qt/help/help_browser.h"
#include "platform/qt/help/help_window.h"
#include "platform/qt/services/share_folder.h"

namespace velmora {
namespace {

int heightOf(HelpBrowser& browser, const QUrl& picture) {
  return browser.loadResource(QTextDocument::ImageResource, picture).value<QImage>().height();
}

/// The real window over the real pages.
class Help : public testing::Test {
 protected:
  QString folder_ = shareFolder() + "/help";
  HelpWindow window_{folder_};
  HelpBrowser& browser_ = *window_.findChild<HelpBrowser*>();
  QListWidget& contents_ = *window_.findChild<QListWidget*>();
  QLineEdit& search_ = *window_.findChild<QLineEdit*>();

  int listed() {
    int rows = 0;
    for (int row = 0; row < contents_.count(); ++row) rows += contents_.item(row)->isHidden() ? 0 : 1;
    return rows;
  }
};

TEST_F(Help, EveryPageIsThereAndLeadsSomewhere) {
  const auto pages = readHelpPages(folder_);
  EXPECT_EQ(static_cast<qsizetype>(pages.size()), QDir(folder_).entryList({"*.html"}).size());
  const QRegularExpression reference("(href|src)=\"([^\"]*)\"");
  for (const HelpPage& page : pages) {
    for (const auto& match : reference.globalMatch(page.html)) {
      const QString path = folder_ + '/' + match.captured(2);
      const bool isPicture = match.captured(1) == "src";
      EXPECT_TRUE(liesIn(isPicture ? shareFolder() : folder_, path)) << path.toStdString();
      EXPECT_TRUE(!isPicture || heightOf(browser_, QUrl::fromLocalFile(path)) > 1) << path.toStdString();
    }
  }
}

TEST_F(Help, ShowsTheTopicAskedForAndGoesBack) {
  for (const int context : {0, 99, 130}) {
    const QString title = context == 130 ? "The Email page" : "Velmora";
    window_.showTopic(context);
    EXPECT_EQ(browser_.documentTitle(), title);
    EXPECT_EQ(contents_.currentItem()->text(), title);
  }
  EXPECT_TRUE(window_.isVisible());
  window_.showTopic(260);
  QTest::keyClick(&browser_, Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(contents_.currentItem()->text(), "The Email page");
  contents_.setCurrentRow(0);
  EXPECT_EQ(browser_.documentTitle(), "Velmora");
}

TEST_F(Help, SearchNarrowsTheContentsAndMarksThePage) {
  window_.showTopic(140);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  search_.setText("  QUIT  running ");
  EXPECT_EQ(listed(), 1);
  EXPECT_EQ(contents_.currentRow(), -1);
  EXPECT_FALSE(browser_.extraSelections().isEmpty()) << "one of the words is on this page too";
  QTest::keyClick(&search_, Qt::Key_Return);
  EXPECT_EQ(browser_.documentTitle(), "The Email page");
  EXPECT_EQ(browser_.extraSelections().size(), 2);
  EXPECT_GT(browser_.verticalScrollBar()->value(), 0) << "the first of them is far down";
  search_.setText("zebra");
  EXPECT_EQ(listed(), 0);
  EXPECT_TRUE(window_.findChild<QLabel*>()->isVisible());
  QTest::keyClick(&search_, Qt::Key_Escape);
  EXPECT_EQ(listed(), contents_.count());
  QTest::keyClick(&search_, Qt::Key_Escape);
  EXPECT_FALSE(window_.isVisible());
}

}  // namespace
}  // namespace velmora
