#include "desktop/services/clock.h"

#include <QDateTime>

namespace borvane {

Date SystemClock::Now() {
  const QDateTime now = QDateTime::currentDateTime();
  return MakeDate({.year = now.date().year(),
                   .month = now.date().month(),
                   .day = now.date().day(),
                   .hour = now.time().hour(),
                   .minute = now.time().minute(),
                   .second = now.time().second()});
}

double SystemClock::SecondsSinceMidnight() {
  constexpr double milliseconds_per_second = 1000;
  return QTime::currentTime().msecsSinceStartOfDay() / milliseconds_per_second;
}

}  // namespace borvane
