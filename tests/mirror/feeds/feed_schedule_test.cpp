#include "feeds/feed_schedule.h"

#include <vector>

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

using namespace std::chrono_literals;
using Failure = FeedSchedule::Failure;
using Milliseconds = FeedSchedule::Milliseconds;

constexpr Milliseconds start = 1000s;

/// The pauses after so many failures, one after another.
std::vector<Milliseconds> PausesAfter(int failures, Failure failure, double random) {
  FeedSchedule schedule(60s, start);
  std::vector<Milliseconds> pauses;
  Milliseconds now = start;
  for (int i = 0; i < failures; ++i) {
    schedule.Asked(now);
    schedule.Failed(now, failure, random);
    pauses.push_back(schedule.Wait(now));
    now += pauses.back();
  }
  return pauses;
}

TEST(FeedSchedule, AsksAtOnceAtFirst) { EXPECT_EQ(FeedSchedule(60s, start).Wait(start), 0ms); }

TEST(FeedSchedule, AsksAPeriodAfterTheLastRequestHoweverLongItTook) {
  FeedSchedule schedule(60s, start);
  schedule.Asked(start);
  schedule.Succeeded(start + 7s, {});
  EXPECT_EQ(schedule.Wait(start + 7s), 53s);
  EXPECT_EQ(schedule.Wait(start + 60s), 0s);
  EXPECT_EQ(schedule.Wait(start + 90s), 0s);
}

TEST(FeedSchedule, DoesNotAskWhileTheServerSaysThatNothingNewerComes) {
  struct Case {
    std::chrono::seconds lifetime;
    Milliseconds wait;
  };
  for (const Case &c : std::vector<Case>{{0s, 58s}, {57s, 58s}, {60s, 60s}, {300s, 300s}}) {
    FeedSchedule schedule(60s, start);
    schedule.Asked(start);
    schedule.Succeeded(start + 2s, c.lifetime);
    EXPECT_EQ(schedule.Wait(start + 2s), c.wait) << c.lifetime.count();
  }
}

TEST(FeedSchedule, PausesForLongerAfterEachFailureUpToABound) {
  EXPECT_EQ(PausesAfter(7, Failure::NoAnswer, 0), (std::vector<Milliseconds>{10s, 20s, 40s, 80s, 160s, 300s, 300s}));
  EXPECT_EQ(PausesAfter(8, Failure::BadAnswer, 0),
            (std::vector<Milliseconds>{1min, 2min, 4min, 8min, 16min, 32min, 60min, 60min}));
}

TEST(FeedSchedule, MakesAPauseLongerByChanceByUpToHalf) {
  EXPECT_EQ(PausesAfter(2, Failure::NoAnswer, 0.5), (std::vector<Milliseconds>{12'500ms, 25s}));
  const Milliseconds longest = PausesAfter(7, Failure::BadAnswer, 0.999999).back();
  EXPECT_GT(longest, 89min);
  EXPECT_LT(longest, 90min);
}

TEST(FeedSchedule, PausesForLongerWhenTheFailuresAreOfBothSorts) {
  FeedSchedule schedule(60s, start);
  std::vector<Milliseconds> pauses;
  for (int i = 0; i < 10; ++i) {
    schedule.Failed(start, i % 2 == 0 ? Failure::BadAnswer : Failure::NoAnswer, 0);
    pauses.push_back(schedule.Wait(start));
  }
  EXPECT_EQ(pauses, (std::vector<Milliseconds>{1min, 20s, 4min, 80s, 16min, 300s, 60min, 300s, 60min, 300s}));
}

TEST(FeedSchedule, PausesForNoLongerThanTheBoundAfterAnyNumberOfFailures) {
  EXPECT_EQ(PausesAfter(1000, Failure::NoAnswer, 0).back(), 5min);
  EXPECT_EQ(PausesAfter(1000, Failure::BadAnswer, 0).back(), 60min);
}

TEST(FeedSchedule, BeginsWithAShortPauseAgainAfterSuccess) {
  FeedSchedule schedule(60s, start);
  for (int i = 0; i < 5; ++i)
    schedule.Failed(start, Failure::BadAnswer, 0);
  schedule.Asked(start);
  schedule.Succeeded(start, {});
  EXPECT_EQ(schedule.Wait(start), 60s);
  schedule.Failed(start, Failure::BadAnswer, 0);
  EXPECT_EQ(schedule.Wait(start), 1min);
}

TEST(FeedSchedule, LeavesAServerAloneForAsLongAsItWants) {
  FeedSchedule schedule(60s, start);
  schedule.Failed(start, Failure::BadAnswer, 0);
  schedule.LeaveAloneUntil(start + 600s);
  EXPECT_EQ(schedule.Wait(start), 600s);
  EXPECT_EQ(schedule.Wait(start + 599s), 1s);
  EXPECT_EQ(schedule.Wait(start + 600s), 0s);
}

TEST(FeedSchedule, PausesForNoLessThanUsualWhenTheServerWantsLess) {
  FeedSchedule schedule(60s, start);
  schedule.Failed(start, Failure::BadAnswer, 0);
  schedule.LeaveAloneUntil(start + 1s);
  EXPECT_EQ(schedule.Wait(start), 1min);
}

TEST(FeedSchedule, LeavesAServerAloneUntilTheLatestOfTheMomentsThatItHasNamed) {
  FeedSchedule schedule(60s, start);
  schedule.LeaveAloneUntil(start + 600s);
  schedule.LeaveAloneUntil(start + 300s);
  EXPECT_EQ(schedule.Wait(start), 600s);
}

TEST(FeedSchedule, LeavesAServerAloneAlthoughAnAnswerOfBeforeWasGood) {
  FeedSchedule schedule(60s, start);
  schedule.Asked(start);
  schedule.LeaveAloneUntil(start + 600s);
  schedule.Succeeded(start + 5s, {});
  EXPECT_EQ(schedule.Wait(start + 5s), 595s);
  schedule.Asked(start + 600s);
  schedule.Succeeded(start + 600s, {});
  EXPECT_EQ(schedule.Wait(start + 600s), 60s) << "that time is over";
}

TEST(FeedSchedule, AsksAtOnceAfterSleepWhateverItWasWaitingFor) {
  FeedSchedule after_success(3600s, start);
  after_success.Asked(start);
  after_success.Succeeded(start, 5s);
  after_success.BeginAgain(start + 5s);
  EXPECT_EQ(after_success.Wait(start + 5s), 0s);

  FeedSchedule after_failures(60s, start);
  for (int i = 0; i < 9; ++i)
    after_failures.Failed(start, Failure::NoAnswer, 0);
  after_failures.BeginAgain(start + 5s);
  EXPECT_EQ(after_failures.Wait(start + 5s), 0s);
  after_failures.Failed(start + 5s, Failure::NoAnswer, 0);
  EXPECT_EQ(after_failures.Wait(start + 5s), 10s) << "the network is often there some seconds after the computer";
}

TEST(FeedSchedule, DoesNotAskAfterSleepWhileTheLastAnswerLives) {
  FeedSchedule schedule(60s, start);
  schedule.Asked(start);
  schedule.Succeeded(start + 2s, 300s);
  schedule.BeginAgain(start + 102s);
  EXPECT_EQ(schedule.Wait(start + 102s), 200s);
  EXPECT_EQ(schedule.Wait(start + 302s), 0s);
  schedule.BeginAgain(start + 8h);
  EXPECT_EQ(schedule.Wait(start + 8h), 0s);

  schedule.Asked(start + 8h);
  schedule.Succeeded(start + 8h, {});
  schedule.BeginAgain(start + 8h + 1s);
  EXPECT_EQ(schedule.Wait(start + 8h + 1s), 0s) << "the newest answer has no lifetime";
}

TEST(FeedSchedule, LeavesAServerAloneAfterSleepForWhatIsLeftOfItsTime) {
  FeedSchedule schedule(60s, start);
  schedule.Failed(start, Failure::BadAnswer, 0);
  schedule.LeaveAloneUntil(start + 3600s);
  schedule.BeginAgain(start + 1010s);
  EXPECT_EQ(schedule.Wait(start + 1010s), 2590s);
  schedule.BeginAgain(start + 2h);
  EXPECT_EQ(schedule.Wait(start + 2h), 0s);
}

TEST(HasSleptBetween, IsSoWhenTheComputerWasAwakeForTenSecondsLessThanHavePassed) {
  const Clocks before = {.elapsed = 100s, .awake = 50s};
  EXPECT_FALSE(HasSleptBetween(before, {.elapsed = 105s, .awake = 55s}));
  EXPECT_FALSE(HasSleptBetween(before, {.elapsed = 114'999ms, .awake = 55s}));
  EXPECT_TRUE(HasSleptBetween(before, {.elapsed = 115s, .awake = 55s}));
  EXPECT_TRUE(HasSleptBetween(before, {.elapsed = 8h, .awake = 55s}));
  EXPECT_FALSE(HasSleptBetween(before, {.elapsed = 104s, .awake = 55s}));
}

TEST(HasSleptBetween, IsNotSoWhenTheClockOfTheDayIsSet) {
  const Clocks before = {.elapsed = 100s, .awake = 50s, .of_day = 1'000'000s};
  for (const Milliseconds of_day : {2'000'000s, 1'000s})
    EXPECT_FALSE(HasSleptBetween(before, {.elapsed = 105s, .awake = 55s, .of_day = of_day}));
}

}  // namespace
}  // namespace borvane::mirror
