#include "platform/qt/windows/rule_file_view.h"

#include <QGroupBox>
#include <QLineEdit>

#include "desktop/opened_window.h"

namespace velmora {
namespace {

class RenamingWindow : public test::OpenedWindow {};

TEST_F(RenamingWindow, IsWorkedByKeysAndStaysOnTheScreen) {
  addAccount("Work");
  option("RulesIniFileName", std::string(240, 'x'));
  open();
  RuleFileView window(program.frmRuleFile, view_.get());
  auto* name = window.findChild<QLineEdit*>("txtRuleFileName");
  const auto opened = [&] {
    view_->activateWindow();  // nobody hands that back here when a window closes
    if (!isActive(*view_)) return false;
    program.frmMain.tbrRules["RulesRename"].click();
    return isActive(window) && QApplication::activeModalWidget() == &window;
  };
  ASSERT_TRUE(opened());
  EXPECT_LE(window.width(), 640);
  EXPECT_EQ(window.findChild<QGroupBox*>("fraRuleFileIntro")->title(), "Please Note");
  QTest::keyClicks(QApplication::focusWidget(), "Bob");  // in place of what is selected
  QTest::keyClick(name, Qt::Key_Return);
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(program.options.RulesIniFileName, "RulesBob.ini");
  ASSERT_TRUE(opened());
  name->setText("Ann");
  auto* cancel = window.findChild<QToolButton*>("Cancel");
  cancel->setFocus();
  QTest::keyClick(cancel, Qt::Key_Return);
  EXPECT_FALSE(window.isVisible()) << "the button that has the keyboard is the one that Enter presses";
  EXPECT_EQ(program.options.RulesIniFileName, "RulesBob.ini");
}

}  // namespace
}  // namespace velmora
