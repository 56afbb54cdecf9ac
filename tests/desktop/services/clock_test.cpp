#include "desktop/services/clock.h"

#include <QDateTime>

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace borvane
