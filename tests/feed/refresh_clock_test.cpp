#include <gtest/gtest.h>

#include "support/program/watching_rig.h"

namespace borvane {
namespace {

/// A program in its timed cycle, with this threshold and after its first refresh.
struct TimedRig : WatchingRig {
  explicit TimedRig(std::string_view threshold) {
    conffrm->Text2.Text = threshold;
    key('R');
    clear_trace();
  }

  void tick(int times = 1) { Rig::tick(frmRecords->Timer1, times); }

  /// The number of the next tick, counted from 1, that requests the page.
  int next_fetch(int limit = 2000) {
    clear_trace();
    for (int number = 1; number <= limit; ++number) {
      tick();
      if (fetches() > 0)
        return number;
    }
    return 0;
  }
};

TEST(RefreshClock, FlipsTheHeartbeatAtEachTick) {
  TimedRig rig("700");
  EXPECT_EQ(frmRecords->Label10.Caption(), "[ ]");
  std::string beats;
  for (int i = 0; i < 4; ++i) {
    rig.tick();
    beats += frmRecords->Label10.Caption();
  }
  EXPECT_EQ(beats, "-+-+");
}

TEST(RefreshClock, CountsEachTick) {
  TimedRig rig("700");
  rig.tick(12);
  EXPECT_EQ(Module1->RefreshCount, 12);
  EXPECT_EQ(rig.fetches(), 0);
}

TEST(RefreshClock, TestsTheThresholdAtMultiplesOfTenOnly) {
  RecordProperty("quirk", "threshold-tested-at-tens");
  TimedRig rig("65");
  Module1->RefreshCount = 65;
  rig.tick();
  EXPECT_EQ(rig.fetches(), 0);
  EXPECT_EQ(rig.next_fetch(), 5) << "the counts 66 to 69 pass, at 70 it refreshes";
}

TEST(RefreshClock, HasAPeriodOfTheThresholdRoundedUpToTens) {
  for (const auto &[threshold, period] : std::initializer_list<std::pair<const char *, int>>{
           {"700", 700}, {"65", 70}, {"70", 70}, {"71", 80}, {"1", 10}, {"10", 10}, {"69.5", 70}, {"70.5", 80}}) {
    TimedRig rig(threshold);
    EXPECT_EQ(rig.next_fetch(), period + 1) << threshold << ", from a count of 0";
    EXPECT_EQ(Module1->RefreshCount, 1) << "a refresh resets the count to 0, and its tick counts";
    EXPECT_EQ(rig.next_fetch(), period) << threshold;
  }
}

TEST(RefreshClock, RefreshesEveryTenTicksWithoutAThreshold) {
  for (const char *threshold : {"0", "", "abc", "-20"}) {
    TimedRig rig(threshold);
    EXPECT_EQ(rig.next_fetch(), 1) << threshold;
    EXPECT_EQ(rig.next_fetch(), 10) << threshold;
  }
}

TEST(RefreshClock, TriesAgainTenTicksAfterAFailureAtATensThreshold) {
  TimedRig rig("700");
  rig.refuse(los_angeles);
  Module1->RefreshCount = 700;
  rig.tick();
  EXPECT_EQ(Module1->RefreshCount, 701) << "the failure sets the threshold, and the tick counts";
  EXPECT_EQ(rig.next_fetch(), 10) << "at a count of 710";
}

TEST(RefreshClock, TriesAgainAtTheNextTenAfterAFailureAtAnotherThreshold) {
  TimedRig rig("65");
  rig.refuse(los_angeles);
  Module1->RefreshCount = 70;
  rig.tick();
  EXPECT_EQ(Module1->RefreshCount, 66);
  EXPECT_EQ(rig.next_fetch(), 5);
}

TEST(RefreshClock, TriesAtTheVeryNextTickAfterAFailureOfTheKey) {
  WatchingRig rig;
  rig.refuse(los_angeles);
  rig.key('R');
  EXPECT_EQ(Module1->RefreshCount, 700);
  rig.clear_trace();
  rig.tick(frmRecords->Timer1);
  EXPECT_EQ(rig.fetches(), 1);
  EXPECT_EQ(Module1->RefreshCount, 701);
}

TEST(RefreshClock, RefreshesTwoTicksAfterAnAreaIsSelected) {
  TimedRig rig("700");
  rig.tick(33);
  rig.choose(conffrm->Combo2, "Los Angeles");
  EXPECT_EQ(Module1->RefreshCount, 699);
  EXPECT_EQ(rig.next_fetch(), 2);
}

TEST(RefreshClock, RefreshesAtMostElevenTicksAfterAnAreaIsSelected) {
  for (const auto &[threshold, ticks] :
       std::initializer_list<std::pair<const char *, int>>{{"61", 11}, {"62", 10}, {"69", 3}, {"70", 2}, {"0", 2}}) {
    TimedRig rig(threshold);
    rig.choose(conffrm->Combo2, "Los Angeles");
    EXPECT_EQ(rig.next_fetch(), ticks) << threshold;
  }
}

TEST(RefreshClock, NeverReachesAThresholdAbove32760) {
  RecordProperty("quirk", "unreachable-threshold-ends-the-program");
  for (const char *threshold : {"32761", "32767", "32768", "40000"}) {
    TimedRig rig("700");
    conffrm->Text2.Text = threshold;
    Module1->RefreshCount = 32760;
    rig.tick(7);
    EXPECT_EQ(Module1->RefreshCount, 32767) << threshold;
    EXPECT_EQ(rig.fetches(), 0) << threshold;
    rig.tick();
    EXPECT_EQ(rig.end_status(), 1) << threshold << ": the count no longer fits 16 bits";
    EXPECT_TRUE(rig.trace({"error"}).at(0).starts_with("error report 6 "));
  }
}

TEST(RefreshClock, ReachesAThresholdOf32760) {
  TimedRig rig("32760");
  Module1->RefreshCount = 32760;
  rig.tick();
  EXPECT_EQ(rig.fetches(), 1);
}

TEST(RefreshClock, WaitsAtAMultipleOfTenWhileARefreshIsBusy) {
  TimedRig rig("10");
  Module1->RefreshBusy = flag_true;
  Module1->RefreshCount = 10;
  rig.tick(3);
  EXPECT_EQ(Module1->RefreshCount, 10);
  EXPECT_EQ(rig.fetches(), 0);
  EXPECT_EQ(frmRecords->Label10.Caption(), "-") << "the heartbeat continues";
  Module1->RefreshBusy = flag_false;
  rig.tick();
  EXPECT_EQ(rig.fetches(), 1);
}

TEST(RefreshClock, CountsBetweenTheTensWhileARefreshIsBusy) {
  TimedRig rig("10");
  Module1->RefreshBusy = flag_true;
  Module1->RefreshCount = 5;
  rig.tick(20);
  EXPECT_EQ(Module1->RefreshCount, 10);
}

TEST(RefreshClock, RefreshesAtOnceWhenTheCityLabelIsEmpty) {
  TimedRig rig("700");
  Module1->RefreshCount = 3;
  frmRecords->Label1(0).Caption = "";
  rig.tick();
  EXPECT_EQ(rig.fetches(), 1);
  EXPECT_EQ(Module1->RefreshCount, 0) << "the tick returns without counting";
  EXPECT_EQ(frmRecords->Label10.Caption(), "[ ]") << "and without a heartbeat";
}

TEST(RefreshClock, ReadsTheThresholdAtTheMomentOfTheTest) {
  TimedRig rig("700");
  Module1->RefreshCount = 10;
  rig.type(conffrm->Text2, "1");
  rig.tick();
  EXPECT_EQ(rig.fetches(), 1);
}

TEST(RefreshClock, DoesNotTickWhileItIsOff) {
  WatchingRig rig;
  rig.tick(frmRecords->Timer1, 5);
  EXPECT_EQ(frmRecords->Label10.Caption(), "[ ]");
  EXPECT_EQ(Module1->RefreshCount, 0);
}

}  // namespace
}  // namespace borvane
