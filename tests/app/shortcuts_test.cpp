#include "app/decisions/shortcuts.h"

#include <gmock/gmock.h>

#include <map>
#include <set>
#include <string>

#include "app/press_shortcut.h"
#include "support/running_program.h"

namespace velmora {
namespace {

TEST(Shortcuts, EachPageHasKeysOfItsOwn) {
  std::set<std::string> all;
  std::map<std::int16_t, std::string> ofPage;
  for (const Shortcut& shortcut : shortcuts) {
    EXPECT_TRUE(all.insert(shortcut.keys).second) << shortcut.keys << " would do neither";
    ofPage[shortcut.page] += std::string(shortcut.keys) + " ";
  }
  const std::map<std::int16_t, std::string> expected = {
      {anyPage, "F1 F5 Ctrl+R Esc Ctrl+Q Ctrl+1 Ctrl+2 Ctrl+3 Ctrl+4 Ctrl+N Ctrl+S "},
      {emailPage, "Ctrl+O Ctrl+Shift+R Ctrl+Shift+S Ctrl+0 Alt+1 Alt+2 Alt+3 Alt+4 Alt+5 "},
      {accountsPage, "Ctrl+T "}};
  EXPECT_EQ(ofPage, expected);
  EXPECT_EQ(givenUp({true, true, true}), (Unfinished{true, false, false})) << "Esc ends what the user is at";
  EXPECT_EQ(givenUp({false, true, true}), (Unfinished{false, true, true}));
}

class Keys : public test::RunningProgram {
 protected:
  void type(std::string_view keys) {
    for (const Shortcut& shortcut : shortcuts) {
      if (shortcut.keys == keys) program.frmMain.KeyPress(shortcut);
    }
  }
};

TEST_F(Keys, WorkOnWhatIsShowingOnly) {
  addAccount("Work").messages = {test::message("b"), test::message("a")};
  start();
  type("F5");
  type("Alt+3");
  EXPECT_EQ(program.order.LastClickedColumn, "Subject");
  for (const auto* page : {"Ctrl+2", "Ctrl+3", "Ctrl+4"}) {
    type(page);
    const std::int16_t order = program.options.SortOrder;
    program.frmMain.lvwEmail.Columns[0].Width = 7;
    for (const auto* keys : {"Alt+1", "Alt+3", "Ctrl+0"}) type(keys);
    EXPECT_EQ(program.order.LastClickedColumn, "Subject") << page;
    EXPECT_EQ(program.options.SortOrder, order) << page;
    EXPECT_EQ(program.frmMain.lvwEmail.Columns[0].Width.get(), 7) << page;
    if (page != std::string_view("Ctrl+2")) type("Ctrl+N");
    EXPECT_EQ(program.accounts.AcntNum(), 1) << page;
  }
  platform.helpShown.clear();
  platform.servers["Work"].line.onReceive = [this] {
    if (platform.helpShown.empty()) type("F1");
  };
  type("F5");
  EXPECT_EQ(platform.helpShown.front(), 130) << "a check brings the Email page forward";
}

}  // namespace
}  // namespace velmora
