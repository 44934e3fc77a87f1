#include <gtest/gtest.h>

#include "platform/controls/timer.h"
#include "platform/controls/toolbar.h"

namespace velmora {
namespace {

TEST(Property, TellsEveryChangeAndNothingElse) {
  Property<std::string> caption = "Help";
  std::vector<std::string> told;
  caption.watch([&](const std::string& text) { told.push_back(text); });
  caption = "Help";
  caption = "Stop";
  EXPECT_EQ(told, (std::vector<std::string>{"Help", "Stop"}));
}

TEST(Timer, DropsTicksThatFallIntoItsOwnHandlerOnly) {
  Timer clock(1000, true);
  Timer check(1000, true);
  int clockTicks = 0;
  int checkTicks = 0;
  clock.Tick = [&] { ++clockTicks; };
  check.Tick = [&] {
    ++checkTicks;
    check.tick();
    clock.tick();
    throw subscriptFailure();
  };
  EXPECT_THROW(check.tick(), RunTimeFailure);
  EXPECT_EQ(checkTicks, 1);
  EXPECT_EQ(clockTicks, 1);
  EXPECT_THROW(check.tick(), RunTimeFailure);
  EXPECT_EQ(checkTicks, 2) << "the guard is lifted afterwards, come what may";
  check.Enabled = false;
  check.tick();
  EXPECT_EQ(checkTicks, 2);
}

TEST(Toolbar, DisabledButtonsAndBarsDontReact) {
  Toolbar bar("images", {{"Go", "Go  ", "Goes", "Go"}});
  int clicks = 0;
  bar.ButtonClick = [&](Button& button) { clicks += button.Key == "Go"; };
  bar["Go"].click();
  bar["Go"].Enabled = false;
  bar["Go"].click();
  bar["Go"].Enabled = true;
  bar.Enabled = false;
  bar["Go"].click();
  EXPECT_EQ(clicks, 1);
  EXPECT_THROW(bar["Stop"], RunTimeFailure);
}

}  // namespace
}  // namespace velmora
