#include "platform/qt/widgets/text_view.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <ctime>
#include <string>
#include <utility>

#include "platform/qt/strings.h"
#include "platform/qt/widgets/harmless_text.h"

namespace velmora {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int Large = 5'000'000;
#else
constexpr int Large = 50'000'000;
#endif

std::string repeat(const QByteArray& text, int size) { return text.repeated(size / text.size() + 1).toStdString(); }

class TextViewTest : public testing::Test {
 protected:
  void SetUp() override {
    for (int i = 0; i < 100'000; ++i) lines_ += std::to_string(i) + "\r\né\n\v";
    wanted_ = harmlessText(lines_);
    view_.resize(600, 400);
    view_.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view_));
    view_.showText(lines_);
  }

  bool whole() const { return view_.document()->characterCount() == wanted_.size() + 1; }
  void press(const QKeySequence& keys) { QTest::keySequence(&view_, keys); }
  QString copyAll() {
    press(QKeySequence::SelectAll);
    press(QKeySequence::Copy);
    return QApplication::clipboard()->text();
  }

  std::string lines_;  // more than have paragraphs of their own
  QString wanted_;
  TextView view_;
};

TEST_F(TextViewTest, ALongTextArrivesWholeAndLeavesTheUsersPlace) {
  const int end = view_.document()->characterCount() - 1;
  EXPECT_FALSE(whole()) << "not all at once";
  QTextCursor cursor = view_.textCursor();
  cursor.setPosition(end);
  cursor.setPosition(40, QTextCursor::KeepAnchor);
  view_.setTextCursor(cursor);
  view_.verticalScrollBar()->setValue(50);
  ASSERT_TRUE(QTest::qWaitFor([this] { return whole(); }, 60'000));
  EXPECT_TRUE(view_.toPlainText() == wanted_);
  EXPECT_EQ(view_.textCursor().anchor(), end);
  EXPECT_EQ(view_.textCursor().position(), 40);
  EXPECT_EQ(view_.verticalScrollBar()->value(), 50);
  EXPECT_LT(view_.blockCount(), 300'000);
  EXPECT_TRUE(QAbstractEventDispatcher::instance()->registeredTimers(&view_).isEmpty()) << "it rests";
}

TEST_F(TextViewTest, WhatAsksForAllWaitsForIt) {
  press(QKeySequence::MoveToEndOfDocument);
  EXPECT_EQ(view_.textCursor().position(), wanted_.size());
  view_.showText(lines_);
  EXPECT_TRUE(copyAll() == wanted_);
  view_.showText(lines_);
  press(Qt::Key_PageDown);
  EXPECT_GT(view_.verticalScrollBar()->value(), 0);
  QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, view_.mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(view_.viewport(), &event);
  const auto actions = view_.findChild<QMenu*>()->actions();
  ASSERT_EQ(actions.size(), 2);
  EXPECT_FALSE(actions.first()->isEnabled()) << "nothing to copy";
  actions.last()->trigger();
  EXPECT_EQ(view_.textCursor().selectionEnd(), wanted_.size());
}

TEST_F(TextViewTest, LongLinesAreBrokenForTheEyeOnly) {
  const std::pair<std::string, int> cases[] = {
      {repeat("x", 9'999), 5},    {std::string(2'000, 'x') + "\r\nnext", 2},
      {repeat("日本", 5'999), 4}, {std::string(4'000, 'x') + "\r\n\r\nnext\n", 5},
      {repeat("\x80", 5'999), 3}, {repeat("some words ", 5'990), 4}};
  for (const auto& [text, paragraphs] : cases) {
    view_.showText(text);
    view_.loadRest();
    EXPECT_EQ(view_.blockCount(), paragraphs) << text.substr(0, 10);
    EXPECT_EQ(utf8(copyAll()), utf8(harmlessText(text)));
  }
}

TEST_F(TextViewTest, OpensAtOnceWhateverTheTextIs) {
  for (const auto* part : {"Some words as any letter has.\r\n", "x", "\r\n", "\u0301", "日本語", "a\u05D0"}) {
    const std::string text = repeat(part, Large);
    const std::clock_t begun = std::clock();
    view_.showText(text);
    view_.viewport()->repaint();
    EXPECT_LT(std::clock() - begun, CLOCKS_PER_SEC) << part;
    QCoreApplication::processEvents();
  }
  view_.showText("next");
  QCoreApplication::processEvents();
  EXPECT_EQ(view_.toPlainText(), "next") << "nothing more comes of the one before";
}

TEST_F(TextViewTest, ShowsNoDisguiseAndSaysWhatIsMissing) {
  view_.showText(std::string("a\0b", 3) + "\u202Ec<b>\uFDD0");
  EXPECT_EQ(utf8(view_.toPlainText()), "a␀b\uFFFDc<b>\uFFFD");
  TextView small(nullptr, 6);
  small.showText("12345é78");
  EXPECT_EQ(utf8(small.toPlainText()), "12345\n[4 bytes more are not shown]");
}

}  // namespace
}  // namespace velmora
