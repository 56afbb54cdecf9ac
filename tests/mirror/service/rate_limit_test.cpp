#include "service/rate_limit.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

const QHostAddress home("10.0.0.1");
const QHostAddress school("10.0.0.2");

TEST(RateLimit, LetsSoManyPassInAnyMinute) {
  RateLimit limit(3);
  EXPECT_TRUE(limit.Admit(home, 1'000));
  EXPECT_TRUE(limit.Admit(home, 30'000));
  EXPECT_TRUE(limit.Admit(home, 60'000));
  EXPECT_FALSE(limit.Admit(home, 60'999));
  EXPECT_TRUE(limit.Admit(home, 61'000));
  EXPECT_FALSE(limit.Admit(home, 61'001));
}

TEST(RateLimit, DoesNotCountWhatItTurnsAway) {
  RateLimit limit(1);
  EXPECT_TRUE(limit.Admit(home, 0));
  for (qint64 now = 1; now < 60'000; now += 1'000)
    EXPECT_FALSE(limit.Admit(home, now));
  EXPECT_TRUE(limit.Admit(home, 60'000));
}

TEST(RateLimit, CountsEachAddressByItself) {
  RateLimit limit(1);
  EXPECT_TRUE(limit.Admit(home, 0));
  EXPECT_TRUE(limit.Admit(school, 0));
  EXPECT_FALSE(limit.Admit(home, 1));
  EXPECT_FALSE(limit.Admit(school, 1));
}

TEST(RateLimit, TakesAnIPv6NetworkForOneClient) {
  RateLimit limit(1);
  EXPECT_TRUE(limit.Admit(QHostAddress("2001:db8:1:2::1"), 0));
  EXPECT_FALSE(limit.Admit(QHostAddress("2001:db8:1:2:ffff::2"), 0));
  EXPECT_TRUE(limit.Admit(QHostAddress("2001:db8:1:3::1"), 0));
}

TEST(RateLimit, TakesAnIPv4AddressWrittenAsIPv6ForTheSame) {
  RateLimit limit(1);
  EXPECT_TRUE(limit.Admit(home, 0));
  EXPECT_FALSE(limit.Admit(QHostAddress("::ffff:10.0.0.1"), 0));
  EXPECT_TRUE(limit.Admit(QHostAddress("::ffff:10.0.0.2"), 0));
}

TEST(RateLimit, DoesNotHoldAnythingAgainstAClientWhenTheClockIsSetBack) {
  RateLimit limit(1);
  EXPECT_TRUE(limit.Admit(home, 3'600'000));
  EXPECT_TRUE(limit.Admit(home, 0));
  EXPECT_FALSE(limit.Admit(home, 1));
}

TEST(RateLimit, ForgetsAnAddressAMinuteAfterItsLastRequest) {
  RateLimit limit(3);
  EXPECT_TRUE(limit.IsEmpty());
  limit.Admit(home, 0);
  limit.Admit(school, 10'000);
  limit.Admit(school, 20'000);
  limit.Forget(60'000);
  EXPECT_FALSE(limit.IsEmpty());
  limit.Forget(79'999);
  EXPECT_FALSE(limit.IsEmpty());
  limit.Forget(80'000);
  EXPECT_TRUE(limit.IsEmpty());
}

TEST(RateLimit, ForgetsNothingThatStillCounts) {
  RateLimit limit(1);
  EXPECT_TRUE(limit.Admit(home, 0));
  limit.Forget(59'999);
  EXPECT_FALSE(limit.Admit(home, 59'999));
}

TEST(RateLimit, ForgetsAnAddressOfATimeThatIsStillToComeWhenTheClockIsSetBack) {
  RateLimit limit(1);
  EXPECT_TRUE(limit.Admit(home, 3'600'000));
  limit.Forget(0);
  EXPECT_TRUE(limit.IsEmpty());
}

TEST(RateLimit, TurnsNewAddressesAwayWhenItsMemoryIsFull) {
  RateLimit limit(1, 2);
  EXPECT_TRUE(limit.Admit(home, 0));
  EXPECT_TRUE(limit.Admit(school, 30'000));
  EXPECT_FALSE(limit.Admit(QHostAddress("10.0.0.3"), 59'999));
  EXPECT_TRUE(limit.Admit(QHostAddress("10.0.0.3"), 60'000)) << "the first one's minute is over";
  EXPECT_FALSE(limit.Admit(school, 60'001)) << "the second one's is not";
}

}  // namespace
}  // namespace borvane::mirror
