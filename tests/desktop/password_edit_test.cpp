#include "platform/qt/widgets/password_edit.h"

#include <QTabBar>

#include "desktop/opened_window.h"

namespace velmora {
namespace {

class PasswordBox : public test::OpenedWindow {};

TEST_F(PasswordBox, IsHiddenAgainByWhateverTakesThePasswordAway) {
  addAccount("One");
  addAccount("Two");
  open();
  press("Accounts");
  auto& box = find<QLineEdit>("txtAcntPassword");
  auto& eye = find<QToolButton>("ShowPassword");
  const std::pair<const char*, std::function<void()>> ends[] = {
      {"the eye", [&eye] { QTest::keyClick(&eye, Qt::Key_Space); }},
      {"another account", [this] { find<QTabBar>("TabStripAcnts").setCurrentIndex(1); }},
      {"another page", [this] { press("Email"), press("Accounts"); }},
      {"the window", [this] { view_->hide(), view_->show(); }},
  };
  for (const auto& [name, end] : ends) {
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Tab);
    ASSERT_TRUE(eye.hasFocus()) << "the keyboard alone leads there";
    QTest::keyClick(&eye, Qt::Key_Space);
    EXPECT_EQ(box.displayText(), "secret");
    end();
    EXPECT_EQ(box.displayText(), "******") << name;
    EXPECT_FALSE(eye.isChecked());
  }
  eye.click();
  box.setText("a\u2028b\n");
  EXPECT_EQ(program.frmMain.txtAcntPassword.Text.get(), "ab") << "as it would be in stars";
}

}  // namespace
}  // namespace velmora
