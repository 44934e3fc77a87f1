#include <gtest/gtest.h>

#include "platform/controls/timer.h"
#include "platform/failure.h"

namespace velmora {
namespace {

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

}  // namespace
}  // namespace velmora
