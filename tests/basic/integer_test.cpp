#include "basic/integer.h"

#include <cstdint>
#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/failure_of.h"

namespace borvane {
namespace {

TEST(Integer, IsZeroAtFirst) { EXPECT_EQ(Integer{}, 0); }

TEST(Integer, HoldsEveryValueOfSixteenBits) {
  for (int value = -32768; value <= 32767; ++value)
    ASSERT_EQ(Integer(value), value);
}

TEST(Integer, RaisesAnOverflowOutsideSixteenBits) {
  for (const std::int64_t value :
       {std::int64_t{32768}, std::int64_t{-32769}, std::int64_t{65536}, std::int64_t{1} << 40,
        std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()})
    EXPECT_EQ(FailureOf([&] { Integer{value}; }), overflow) << value;
}

TEST(Integer, ChecksASum) {
  EXPECT_EQ(Integer(32766) + 1, 32767);
  EXPECT_EQ(FailureOf([] { Integer(32767) + 1; }), overflow);
  EXPECT_EQ(FailureOf([] { Integer(20000) + Integer(20000); }), overflow);
  EXPECT_EQ(FailureOf([] { Integer(1) + std::numeric_limits<int>::max(); }), overflow);
}

TEST(Integer, ChecksADifference) {
  EXPECT_EQ(Integer(-32767) - 1, -32768);
  EXPECT_EQ(FailureOf([] { Integer(-32768) - 1; }), overflow);
  EXPECT_EQ(FailureOf([] { Integer(-20000) - Integer(20000); }), overflow);
  EXPECT_EQ(FailureOf([] { Integer(-1) - std::numeric_limits<int>::min(); }), overflow);
}

TEST(Integer, KeepsItsKindInSumsAndDifferences) {
  static_assert(std::is_same_v<decltype(Integer(1) + 1), Integer>);
  static_assert(std::is_same_v<decltype(Integer(1) - 1), Integer>);
  static_assert(std::is_same_v<decltype(Integer(1) + Integer(1)), Integer>);
  static_assert(std::is_same_v<decltype(Integer(1) - Integer(1)), Integer>);
  EXPECT_EQ(FailureOf([] { Integer(32767) + 1 - 1; }), overflow);
}

TEST(Integer, ComparesLikeTheNumberThatItIs) {
  EXPECT_TRUE(Integer(-1) < Integer(0));
  EXPECT_TRUE(Integer(5) == 5);
  EXPECT_TRUE(Integer(32767) < 40000);
}

}  // namespace
}  // namespace borvane
