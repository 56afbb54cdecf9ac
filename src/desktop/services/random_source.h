#pragma once

#include <random>

#include "platform/random_source.h"

namespace borvane {

/// Random numbers of the standard library's Mersenne twister.
class TwisterRandomSource final : public RandomSource {
 public:
  void Seed(double seed) override;
  double Next() override;

 private:
  std::mt19937_64 engine_;
};

}  // namespace borvane
