#pragma once

#include "platform/clock.h"

namespace borvane {

/// A clock that advances only when the test moves it.
class FakeClock final : public Clock {
 public:
  void Set(const CalendarTime &time) { now_ = MakeDate(time); }
  void SetFraction(double fraction) { fraction_ = fraction; }
  void Advance(int seconds) { now_.seconds += seconds; }

  Date Now() override { return now_; }

  double SecondsSinceMidnight() override {
    constexpr std::int64_t seconds_a_day = 24 * 60 * 60;
    return static_cast<double>(now_.seconds % seconds_a_day) + fraction_;
  }

 private:
  Date now_ = MakeDate({.year = 2018, .month = 2, .day = 7, .hour = 1, .minute = 30, .second = 15});
  double fraction_ = 0;
};

}  // namespace borvane
