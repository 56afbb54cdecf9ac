#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class TimerOnDesktop : public testing::Test {
 protected:
  TimerOnDesktop() {
    sample->Timer1.Timer = [this] { ++ticks; };
  }

  bool ticks_within(int milliseconds) {
    const int before = ticks;
    return QTest::qWaitFor([&] { return ticks > before; }, milliseconds);
  }

  ScreenRig rig;
  int ticks = 0;
};

TEST_F(TimerOnDesktop, TicksThoughItsWindowHasNeverBeenShown) {
  sample->Timer1.Interval = 5;

  EXPECT_TRUE(ticks_within(20'000));
  EXPECT_TRUE(ticks_within(20'000));
}

TEST_F(TimerOnDesktop, StopsWhenItIsDisabledAndGoesOnWhenItIsEnabled) {
  sample->Timer1.Interval = 5;
  sample->Timer1.Enabled = false;
  EXPECT_FALSE(ticks_within(50));

  sample->Timer1.Enabled = true;
  EXPECT_TRUE(ticks_within(20'000));
}

TEST_F(TimerOnDesktop, DoesNotCountWithoutAnInterval) {
  sample->Timer1.Interval = 5;
  sample->Timer1.Interval = 0;

  EXPECT_FALSE(ticks_within(50));
}

TEST_F(TimerOnDesktop, IsNotEnteredAgainWhileItsHandlerLetsEventsRun) {
  int depth = 0;
  int deepest = 0;
  sample->Timer1.Timer = [&] {
    ++ticks;
    deepest = std::max(deepest, ++depth);
    QTest::qWait(30);
    --depth;
  };
  sample->Timer1.Interval = 5;
  EXPECT_TRUE(QTest::qWaitFor([&] { return ticks > 1; }, 20'000));

  EXPECT_EQ(deepest, 1);
}

TEST_F(TimerOnDesktop, MayUnloadItsOwnWindow) {
  sample->Timer1.Timer = [this] {
    ++ticks;
    sample.Unload();
  };
  sample->Timer1.Interval = 5;
  EXPECT_TRUE(ticks_within(20'000));

  EXPECT_EQ(sample.IfLoaded(), nullptr);
  EXPECT_FALSE(ticks_within(50));
}

TEST_F(TimerOnDesktop, NoTimerTicksOnceTheDesktopIsStopped) {
  sample->Timer1.Interval = 5;
  rig.forms().Stop();

  EXPECT_FALSE(ticks_within(50));
}

}  // namespace
}  // namespace borvane
