#pragma once

#include <cstdint>
#include <limits>

#include "basic/failure.h"

namespace borvane {

/// A signed 16-bit whole number, the program's kind for positions and counters. A value outside -32768 to 32767, given
/// or computed, raises an overflow.
class Integer {
 public:
  constexpr Integer() = default;

  // NOLINTNEXTLINE(google-explicit-constructor): an Integer is written and compared like the number that it is
  constexpr Integer(std::int64_t value) : value_(Checked(value)) {}

  // NOLINTNEXTLINE(google-explicit-constructor)
  constexpr operator int() const { return value_; }

  friend constexpr Integer operator+(Integer a, Integer b) { return Sum(a.value_, b.value_); }
  friend constexpr Integer operator+(Integer a, int b) { return Sum(a.value_, b); }
  friend constexpr Integer operator-(Integer a, Integer b) { return Sum(a.value_, -std::int64_t{b.value_}); }
  friend constexpr Integer operator-(Integer a, int b) { return Sum(a.value_, -std::int64_t{b}); }

 private:
  static constexpr std::int16_t Checked(std::int64_t value) {
    if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max())
      Fail(Failure::Overflow);
    return static_cast<std::int16_t>(value);
  }
  static constexpr Integer Sum(std::int64_t a, std::int64_t b) { return Integer(a + b); }

  std::int16_t value_ = 0;
};

}  // namespace borvane
