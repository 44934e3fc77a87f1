#include <gtest/gtest.h>

#include "platform/controls/tab_strip.h"
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
  };
  check.tick();
  EXPECT_EQ(checkTicks, 1);
  EXPECT_EQ(clockTicks, 1);
  check.tick();
  EXPECT_EQ(checkTicks, 2) << "the guard is lifted afterwards";
  check.Enabled = false;
  check.tick();
  EXPECT_EQ(checkTicks, 2);
}

TEST(Timer, TicksOnAfterAHandlerThatFailed) {
  Timer timer(1000, true);
  int ticks = 0;
  timer.Tick = [&] {
    if (++ticks == 1) throw subscriptFailure();
  };
  EXPECT_THROW(timer.tick(), RunTimeFailure);
  timer.tick();
  EXPECT_EQ(ticks, 2);
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

TEST(TabStrip, RaisesClickWhoeverSelects) {
  TabStrip strip;
  int clicks = 0;
  strip.Add("One", "");
  strip.Add("Two", "");
  strip.Click = [&] { ++clicks; };
  strip.SelectTab(1);
  EXPECT_EQ(clicks, 0);
  strip.SelectTab(2);
  EXPECT_EQ(clicks, 1);
  EXPECT_THROW(strip.SelectTab(3), RunTimeFailure);
}

}  // namespace
}  // namespace velmora
