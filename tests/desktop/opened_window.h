#pragma once

#include <QApplication>
#include <QTest>
#include <QToolButton>
#include <QTreeView>
#include <memory>

#include "platform/qt/windows/main_window_view.h"
#include "platform/qt/windows/preview_view.h"
#include "support/running_program.h"

namespace velmora::test {

/// The real windows over the program, whose servers live in memory.
class OpenedWindow : public RunningProgram {
 protected:
  void SetUp() override {
    platform.onYield = [] { QCoreApplication::processEvents(); };
  }

  void open() {
    view_ = std::make_unique<MainWindowView>(program.frmMain);
    preview_ = new PreviewView(program.frmPreview, view_.get());  // NOLINT: its parent owns it
    start();
    ASSERT_TRUE(isActive(*view_));
  }

  /// With one account, whose messages are listed.
  void openOn(std::vector<MemoryMessage> messages) {
    addAccount("Work").messages = std::move(messages);
    open();
    press("EmailCheck");
  }

  /// A window becomes the active one. Its QWindow takes itself for it as soon as any window above it is.
  static bool isActive(const QWidget& window) {
    return QTest::qWaitFor([&window] { return window.isActiveWindow(); });
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

  void clickAt(const QPoint& at, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::mouseMove(list().viewport(), at);
    QTest::mouseClick(list().viewport(), Qt::LeftButton, keys, at);
  }
  QPoint middleOf(int row, int column = 0) { return list().visualRect(list().model()->index(row, column)).center(); }

  std::unique_ptr<MainWindowView> view_;
  PreviewView* preview_ = nullptr;
};

}  // namespace velmora::test
