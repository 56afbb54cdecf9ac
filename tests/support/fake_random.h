#pragma once

#include <deque>

#include "basic/number.h"
#include "platform/random_source.h"
#include "support/trace.h"

namespace borvane {

/// Random numbers that the test sets; 0.5 when none is left.
class FakeRandom final : public RandomSource {
 public:
  explicit FakeRandom(Trace &trace) : trace_(trace) {}

  void Add(double number) { numbers_.push_back(number); }
  bool is_empty() const { return numbers_.empty(); }

  void Seed(double seed) override { trace_.Add("seed " + DoubleText(seed)); }

  double Next() override {
    trace_.Add("draw");
    if (numbers_.empty())
      return 0.5;
    const double number = numbers_.front();
    numbers_.pop_front();
    return number;
  }

 private:
  Trace &trace_;
  std::deque<double> numbers_;
};

}  // namespace borvane
