#include "desktop/services/clock.h"

#include <QDateTime>

#include <gtest/gtest.h>

namespace borvane {
namespace {

TEST(SystemClock, GivesLocalTime) {
  SystemClock clock;
  // What a clock on the wall shows, without its zone: an hour in autumn comes twice.
  const auto wall_time = [] {
    const QDateTime now = QDateTime::currentDateTime();
    return QDateTime(now.date(), now.time(), Qt::UTC);
  };
  const QDateTime before = wall_time().addSecs(-1);
  const CalendarTime now = PartsOf(clock.Now());
  const QDateTime given(QDate(now.year, now.month, now.day), QTime(now.hour, now.minute, now.second), Qt::UTC);

  EXPECT_GE(given, before);
  EXPECT_LE(given, wall_time());
}

TEST(SystemClock, CountsTheSecondsOfTheDayWithTheirFraction) {
  SystemClock clock;
  const double before = QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
  const double seconds = clock.SecondsSinceMidnight();
  const double after = QTime::currentTime().msecsSinceStartOfDay() / 1000.0;

  EXPECT_TRUE((before <= seconds && seconds <= after) || after < before);
}

}  // namespace
}  // namespace borvane
