#include <gmock/gmock.h>

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>

#include "desktop/opened_window.h"

namespace velmora {
namespace {

using test::message;

class PreviewOnScreen : public test::OpenedWindow {
 protected:
  void preview(const test::MemoryMessage& shown) {
    option("MessageSort", "0");
    openOn({shown, message("other")});
    clickAt(middleOf(0));
    press("EmailPreview");
    ASSERT_TRUE(isActive(*preview_));
  }
  QPlainTextEdit& body() { return find<QPlainTextEdit>("rtbBody"); }
};

TEST_F(PreviewOnScreen, ShowsTheMessageOnTwoTabs) {
  preview({"u",
           "From: Ann <a@b.org>\r\nTo: me\r\nDate: 11/15/2026 4:22:05 PM\r\nSubject: <h1>Hi</h1>\r\n\r\nDear "
           "<b>you</b>,\r\n\thttp://example.org/\r\n"});
  EXPECT_EQ(find<QLineEdit>("txtPrvFrom").text(), "Ann <a@b.org>");
  EXPECT_EQ(find<QLineEdit>("txtPrvTo").text(), "me");
  EXPECT_EQ(find<QLineEdit>("txtPrvDate").text(), "Nov 15, 2026 04:22:05 PM");
  EXPECT_EQ(find<QLineEdit>("txtPrvSubject").text(), "<h1>Hi</h1>");
  EXPECT_EQ(body().toPlainText(), "Dear <b>you</b>,\n\thttp://example.org/\n");
  EXPECT_TRUE(body().hasFocus());
  auto& tabs = find<QTabBar>("TabStrip");
  EXPECT_EQ(tabs.tabText(0), "Body (Plain Text Only)");
  const QRect place = body().geometry();
  tabs.setCurrentIndex(1);
  auto& raw = find<QPlainTextEdit>("rtbRawMsg");
  EXPECT_TRUE(raw.toPlainText().contains("\nSubject: <h1>Hi</h1>\n\nDear"));
  EXPECT_TRUE(raw.hasFocus());
  EXPECT_FALSE(body().isVisible());
  QCoreApplication::processEvents();
  EXPECT_EQ(raw.geometry(), place);
  press("Exit Preview");
  EXPECT_FALSE(preview_->isVisible());
  EXPECT_EQ(body().toPlainText(), "") << "nothing outlives the showing";
}

TEST_F(PreviewOnScreen, KeysWorkItAndTheListStaysUsable) {
  preview(message("one"));
  QTest::keyClick(preview_, Qt::Key_2, Qt::ControlModifier);
  EXPECT_TRUE(find<QPlainTextEdit>("rtbRawMsg").isVisible());
  QTest::keyClick(preview_, Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_TRUE(body().isVisible());
  QTest::keyClick(preview_, Qt::Key_F1);
  EXPECT_EQ(platform.helpShown, std::vector<int>{131});
  EXPECT_TRUE(find<QLineEdit>("txtPrvSubject").isReadOnly());
  EXPECT_TRUE(body().isReadOnly());
  platform.chosenFile = "/tmp/x.eml";
  QTest::keyClick(preview_, Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(platform.written.contains("/tmp/x.eml"));
  clickAt(middleOf(1));
  EXPECT_EQ(find<QLineEdit>("txtPrvSubject").text(), "other");
  platform.answers = {Answer::No};
  QTest::keyClick(preview_, Qt::Key_Delete);
  EXPECT_EQ(platform.asked.size(), 1U);
  EXPECT_FALSE(preview_->isVisible());
}

TEST_F(PreviewOnScreen, ClosesByItsBoxAndStaysLargeEnough) {
  preview(message("one"));
  preview_->resize(1, 1);
  EXPECT_EQ(preview_->size(), preview_->minimumSize());
  const int textWidth = body().width();
  preview_->resize(800, 600);
  EXPECT_TRUE(QTest::qWaitFor([&] { return body().width() > textWidth; }));
  preview_->close();
  EXPECT_FALSE(program.frmPreview.PreviewOpen);
  press("EmailPreview");
  EXPECT_TRUE(preview_->isVisible());
}

}  // namespace
}  // namespace velmora
