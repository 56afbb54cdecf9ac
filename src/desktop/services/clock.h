#pragma once

#include "platform/clock.h"

namespace borvane {

/// The computer's clock.
class SystemClock final : public Clock {
 public:
  Date Now() override;
  double SecondsSinceMidnight() override;
};

}  // namespace borvane
