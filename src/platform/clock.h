#pragma once

#include "basic/date.h"

namespace borvane {

/// The computer's clock, in local time.
class Clock {
 public:
  virtual Date Now() = 0;

  /// Seconds since midnight, with the fraction.
  virtual double SecondsSinceMidnight() = 0;

 protected:
  ~Clock() = default;
};

}  // namespace borvane
