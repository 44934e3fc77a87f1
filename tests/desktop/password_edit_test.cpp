#include "platform/qt/widgets/password_edit.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTabBar>

#include "desktop/opened_window.h"
#include "platform/qt/windows/password_dialog.h"

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

TEST_F(PasswordBox, IsAskedForInADialogThatTakesNoBlankOne) {
  PasswordDialog dialog({"Why <b>not</b>?", "Password Needed"}, nullptr);
  dialog.show();
  ASSERT_TRUE(isActive(dialog));
  auto* box = dialog.findChild<PasswordEdit*>();
  QTest::keyClick(box, Qt::Key_Return);
  EXPECT_TRUE(dialog.isVisible());
  QTest::keyClicks(box, "secret");
  QTest::keyClick(box, Qt::Key_Return);
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_EQ(dialog.password(), "secret");
}

}  // namespace
}  // namespace velmora
