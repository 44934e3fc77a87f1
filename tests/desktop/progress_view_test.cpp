#include "platform/qt/windows/progress_view.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QScreen>
#include <QTest>
#include <QToolButton>

#include "messages/progress_window.h"
#include "platform/qt/widgets/text_view.h"

namespace velmora {
namespace {

class ProgressViewTest : public testing::Test {
 protected:
  void SetUp() override {
    window_.ProgressBar.Visible = true;
    window_.tbrProgress.ButtonClick = [this](Button&) { ++stops_; };
    window_.Close = [this] { ++closes_; };
    parent_.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&parent_));
  }

  ProgressWindow window_;
  QWidget parent_;
  QLineEdit input_{&parent_};
  ProgressView view_{window_, "frmPrinting", &parent_};
  int stops_ = 0;
  int closes_ = 0;
};

TEST_F(ProgressViewTest, TellsAndIsEndedByKeysThatAreMeant) {
  EXPECT_EQ(view_.objectName(), "frmPrinting");
  parent_.setFocus();
  window_.Visible = true;
  ASSERT_TRUE(QTest::qWaitFor([this] { return view_.isActiveWindow(); }));
  EXPECT_FALSE(view_.testAttribute(Qt::WA_ShowWithoutActivating));
  for (const auto key : {Qt::Key_Space, Qt::Key_Return}) QTest::keyClick(QApplication::focusWidget(), key);
  EXPECT_EQ(stops_, 0) << "these the user was still at";
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  EXPECT_EQ(stops_, 1);
  QTest::keyClick(&view_, Qt::Key_Escape);
  view_.close();
  EXPECT_EQ(closes_, 2);
  EXPECT_TRUE(view_.isVisible()) << "that is for the form to say";
  auto* bar = view_.findChild<QProgressBar*>("ProgressBar");
  EXPECT_EQ(bar->accessibleName(), "Progress");
  window_.ProgressBar.Value = 40;
  EXPECT_EQ(bar->value(), 40);
  window_.ProgressBar.Max = 0;
  EXPECT_EQ(bar->maximum(), 0) << "it is busy";
}

TEST_F(ProgressViewTest, LeavesTheKeyboardToWhoWrites) {
  TextView text(&parent_);
  text.show();
  for (QWidget* place : {static_cast<QWidget*>(&input_), static_cast<QWidget*>(&text)}) {
    parent_.activateWindow();
    place->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([place] { return QApplication::focusWidget() == place; }));
    window_.Visible = true;
    EXPECT_FALSE(view_.isVisible()) << "what is done in a moment needs no window";
    ASSERT_TRUE(QTest::qWaitFor([this] { return view_.isVisible(); }));
    EXPECT_EQ(view_.testAttribute(Qt::WA_ShowWithoutActivating), place == &input_);
    window_.Visible = false;
  }
}

TEST_F(ProgressViewTest, ShowsWhateverIsSaidHarmlessAndOnTheScreen) {
  const QString long_(5000, u'x');
  window_.lblProgress.Caption = "<b>Printer</b> \u202Etxt\n" + long_.toStdString() + std::string(100, '\n') + "end";
  window_.Visible = true;
  ASSERT_TRUE(QTest::qWaitFor([this] { return view_.isVisible(); }));
  auto* label = view_.findChild<QLabel*>("lblProgress");
  EXPECT_TRUE(label->text().startsWith("<b>Printer</b> \uFFFDtxt\n"));
  EXPECT_EQ(label->textFormat(), Qt::PlainText);
  EXPECT_TRUE(view_.screen()->availableGeometry().contains(view_.geometry()));
  EXPECT_LE(label->heightForWidth(label->width()), label->height());
}

}  // namespace
}  // namespace velmora
