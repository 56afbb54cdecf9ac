#include "controls/timer.h"

#include <gtest/gtest.h>

#include "support/box.h"

namespace borvane {
namespace {

struct Clockwork {
  Box box;
  TimerControl timer{box, "Timer1", {.Interval = 700}};
  int ticks = 0;

  Clockwork() {
    timer.Timer = [this] { ++ticks; };
  }
};

TEST(TimerControl, CountsOnlyWhileEnabledWithAnIntervalAboveZero) {
  Clockwork clockwork;
  EXPECT_TRUE(clockwork.timer.IsCounting());
  clockwork.timer.Enabled = false;
  EXPECT_FALSE(clockwork.timer.IsCounting());
  clockwork.timer.Enabled = true;
  clockwork.timer.Interval = 0;
  EXPECT_FALSE(clockwork.timer.IsCounting());
  clockwork.timer.Interval = -1;
  EXPECT_FALSE(clockwork.timer.IsCounting());
}

TEST(TimerControl, RaisesTimerAtEachTickAndNothingWhileItDoesNotCount) {
  Clockwork clockwork;
  clockwork.timer.Tick();
  clockwork.timer.Tick();
  EXPECT_EQ(clockwork.ticks, 2);
  clockwork.timer.Enabled = false;
  clockwork.timer.Tick();
  EXPECT_EQ(clockwork.ticks, 2);
  clockwork.timer.Enabled = true;
  clockwork.timer.Interval = 0;
  clockwork.timer.Tick();
  EXPECT_EQ(clockwork.ticks, 2);
}

TEST(TimerControl, DoesNotTickInsideItsOwnHandler) {
  Clockwork clockwork;
  clockwork.timer.Timer = [&] {
    ++clockwork.ticks;
    clockwork.timer.Tick();
  };
  clockwork.timer.Tick();
  EXPECT_EQ(clockwork.ticks, 1);
}

TEST(TimerControl, TicksAgainWhenItsHandlerHasReturned) {
  Clockwork clockwork;
  clockwork.timer.Timer = [&] {
    ++clockwork.ticks;
    clockwork.timer.Tick();
  };
  clockwork.timer.Tick();
  clockwork.timer.Tick();
  EXPECT_EQ(clockwork.ticks, 2);
}

TEST(TimerControl, TicksAgainWhenItsHandlerHasFailed) {
  Clockwork clockwork;
  clockwork.timer.Timer = [&] {
    ++clockwork.ticks;
    Fail(Failure::Overflow);
  };
  EXPECT_THROW(clockwork.timer.Tick(), RuntimeError);
  EXPECT_THROW(clockwork.timer.Tick(), RuntimeError);
  EXPECT_EQ(clockwork.ticks, 2);
}

TEST(TimerControl, TicksInsideItsOwnHandlerOnceDisabledAndEnabledMeanwhile) {
  Clockwork clockwork;
  clockwork.timer.Timer = [&] {
    if (++clockwork.ticks > 1)
      return;
    clockwork.timer.Enabled = false;
    clockwork.timer.Enabled = true;
    clockwork.timer.Tick();
  };
  clockwork.timer.Tick();
  EXPECT_EQ(clockwork.ticks, 2);
}

TEST(TimerControl, PreventsTicksInsideTheInnerHandlerToo) {
  Clockwork clockwork;
  clockwork.timer.Timer = [&] {
    ++clockwork.ticks;
    if (clockwork.ticks == 1) {
      clockwork.timer.Enabled = false;
      clockwork.timer.Enabled = true;
    }
    if (clockwork.ticks < 5)
      clockwork.timer.Tick();
  };
  clockwork.timer.Tick();
  EXPECT_EQ(clockwork.ticks, 2);
}

TEST(TimerControl, IsNotReleasedByEnablingAnEnabledTimer) {
  Clockwork clockwork;
  clockwork.timer.Timer = [&] {
    ++clockwork.ticks;
    clockwork.timer.Enabled = true;
    clockwork.timer.Tick();
  };
  clockwork.timer.Tick();
  EXPECT_EQ(clockwork.ticks, 1);
}

TEST(TimerControl, IsReleasedByItsEnabledStateOnly) {
  Clockwork clockwork;
  clockwork.timer.Timer = [&] {
    ++clockwork.ticks;
    clockwork.timer.Interval = 0;
    clockwork.timer.Interval = 100;
    clockwork.timer.Tick();
  };
  clockwork.timer.Tick();
  EXPECT_EQ(clockwork.ticks, 1);
}

TEST(TimerControl, DoesNotBlockOtherTimers) {
  Clockwork clockwork;
  TimerControl other{clockwork.box, "Timer2", {.Interval = 100}};
  int other_ticks = 0;
  other.Timer = [&] { ++other_ticks; };
  clockwork.timer.Timer = [&] { other.Tick(); };
  clockwork.timer.Tick();
  EXPECT_EQ(other_ticks, 1);
}

}  // namespace
}  // namespace borvane
