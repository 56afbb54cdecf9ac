#include "desktop/services/random_source.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace borvane {
namespace {

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
