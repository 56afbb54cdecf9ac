#include "desktop/services/tone_schedule.h"

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace borvane {
namespace {

using std::chrono::milliseconds;

/// When tones of 10 ms end, in milliseconds after the first one is asked for, that are asked for at these moments.
std::vector<long> Ends(std::initializer_list<int> moments) {
  const ToneSchedule::Time start(std::chrono::hours(1));
  ToneSchedule schedule;
  std::vector<long> ends;
  for (const int moment : moments) {
    const auto end = schedule.EndOf(start + milliseconds(moment), milliseconds(10));
    ends.push_back(std::chrono::duration_cast<milliseconds>(end - start).count());
  }
  return ends;
}

TEST(ToneSchedule, EndsEachToneOneLengthAfterTheLast) { EXPECT_EQ(Ends({0, 10, 20}), (std::vector<long>{10, 20, 30})); }

TEST(ToneSchedule, CountsFromTheFirstToneSoThatPausesAreMadeUpFor) {
  EXPECT_EQ(Ends({0, 13, 24, 31}), (std::vector<long>{10, 20, 30, 40}));
  EXPECT_EQ(Ends({0, 60, 60, 60, 60, 60, 60}), (std::vector<long>{10, 20, 30, 40, 50, 60, 70})) << "up to 50 ms";
}

TEST(ToneSchedule, StartsAgainAfterALongerPause) {
  EXPECT_EQ(Ends({0, 61, 71}), (std::vector<long>{10, 71, 81}));
  EXPECT_EQ(Ends({0, 10, 5000, 5010}), (std::vector<long>{10, 20, 5010, 5020}));
}

TEST(ToneSchedule, LetsAToneThatIsAskedForEarlyFollowTheLast) {
  EXPECT_EQ(Ends({0, 0, 0}), (std::vector<long>{10, 20, 30}));
}

TEST(ToneSchedule, TakesTonesOfAnyLength) {
  const ToneSchedule::Time start(std::chrono::hours(1));
  ToneSchedule schedule;
  const milliseconds longest(std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(schedule.EndOf(start, longest), start + longest);
  EXPECT_EQ(schedule.EndOf(start + longest, longest), start + 2 * longest);
}

}  // namespace
}  // namespace borvane
