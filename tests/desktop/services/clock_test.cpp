#include "desktop/services/clock.h"

#include <QDateTime>
#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "desktop/services/random_source.h"

namespace borvane {
namespace {

TEST(SystemClock, GivesLocalTime) {
  SystemClock clock;
  const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
  const CalendarTime now = PartsOf(clock.Now());
  const QDateTime given(QDate(now.year, now.month, now.day), QTime(now.hour, now.minute, now.second));

  EXPECT_GE(given, before);
  EXPECT_LE(given, QDateTime::currentDateTime());
}

TEST(SystemClock, CountsTheSecondsOfTheDayWithTheirFraction) {
  SystemClock clock;
  const double before = QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
  const double seconds = clock.SecondsSinceMidnight();
  const double after = QTime::currentTime().msecsSinceStartOfDay() / 1000.0;

  EXPECT_TRUE((before <= seconds && seconds <= after) || after < before);
}

std::vector<double> Draws(TwisterRandomSource &random, double seed) {
  random.Seed(seed);
  std::vector<double> draws(1000);
  std::generate(draws.begin(), draws.end(), [&] { return random.Next(); });
  return draws;
}

TEST(TwisterRandomSource, BeginsTheSequenceOfItsSeed) {
  TwisterRandomSource random;
  const std::vector<double> first = Draws(random, 34'567.89);

  EXPECT_EQ(Draws(random, 34'567.89), first);
  EXPECT_NE(Draws(random, 34'567.9), first);
}

TEST(TwisterRandomSource, DrawsFromZeroToBelowOneEvenly) {
  TwisterRandomSource random;
  const std::vector<double> draws = Draws(random, 1);
  EXPECT_GE(*std::min_element(draws.begin(), draws.end()), 0);
  EXPECT_LT(*std::max_element(draws.begin(), draws.end()), 1);
  const auto low = std::count_if(draws.begin(), draws.end(), [](double draw) { return draw < 0.5; });
  EXPECT_GT(low, 400);
  EXPECT_LT(low, 600);
}

}  // namespace
}  // namespace borvane
