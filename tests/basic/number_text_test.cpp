#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "basic/number.h"
#include "support/failure_of.h"

namespace borvane {
namespace {

TEST(SingleText, HasALeadingZero) {
  EXPECT_EQ(SingleText(0.5F), "0.5");
  EXPECT_EQ(SingleText(-0.5F), "-0.5");
  EXPECT_EQ(SingleText(4.0F / 7.0F), "0.5714286");
}

TEST(SingleText, HasUpToSevenSignificantDigits) {
  EXPECT_EQ(SingleText(4.0F / 7.0F + 1), "1.571429");
  EXPECT_EQ(SingleText(39.0F / 7.0F), "5.571429");
  EXPECT_EQ(SingleText(1234567.0F), "1234567");
  EXPECT_EQ(SingleText(123456.789F), "123456.8");
  EXPECT_EQ(SingleText(9999999.0F), "9999999");
}

TEST(SingleText, DropsTrailingZeros) {
  EXPECT_EQ(SingleText(5.2F), "5.2");
  EXPECT_EQ(SingleText(5.0F), "5");
  EXPECT_EQ(SingleText(0.1F), "0.1");
  EXPECT_EQ(SingleText(1200.0F), "1200");
}

TEST(SingleText, UsesTheGivenSeparator) {
  EXPECT_EQ(SingleText(5.25F, ','), "5,25");
  EXPECT_EQ(SingleText(-0.5F, ','), "-0,5");
  EXPECT_EQ(SingleText(1234567.5F * 100, ','), "1,234568E+08");
  EXPECT_EQ(SingleText(5.0F, ','), "5");
}

TEST(SingleText, UsesAnExponentFromTenToTheSeventhOn) {
  EXPECT_EQ(SingleText(10'000'000.0F), "1E+07");
  EXPECT_EQ(SingleText(12'345'678.0F), "1.234568E+07");
  EXPECT_EQ(SingleText(-12'345'678.0F), "-1.234568E+07");
  EXPECT_EQ(SingleText(std::numeric_limits<float>::max()), "3.402823E+38");
}

TEST(SingleText, StaysPlainDownToATenThousandth) {
  EXPECT_EQ(SingleText(0.0001F), "0.0001");
  EXPECT_EQ(SingleText(0.0001234567F), "0.0001234567");
  EXPECT_EQ(SingleText(0.00099999F), "0.00099999");
}

TEST(SingleText, StaysPlainBelowWhileSevenDecimalsSuffice) {
  EXPECT_EQ(SingleText(0.00001F), "0.00001");
  EXPECT_EQ(SingleText(0.0000123F), "0.0000123");
  EXPECT_EQ(SingleText(0.0000999F), "0.0000999");
  EXPECT_EQ(SingleText(0.0000001F), "0.0000001");
  EXPECT_EQ(SingleText(-0.0000002F), "-0.0000002");
}

TEST(SingleText, UsesAnExponentBelowWhereSevenDecimalsAreTooFew) {
  EXPECT_EQ(SingleText(0.00001234F), "1.234E-05");
  EXPECT_EQ(SingleText(0.00009999999F), "9.999999E-05");
  EXPECT_EQ(SingleText(0.00000001F), "1E-08");
  EXPECT_EQ(SingleText(-0.00000012F), "-1.2E-07");
  EXPECT_EQ(SingleText(std::numeric_limits<float>::denorm_min()), "1.401298E-45");
}

TEST(SingleText, IsZeroForBothZeros) {
  EXPECT_EQ(SingleText(0.0F), "0");
  EXPECT_EQ(SingleText(-0.0F), "0");
}

TEST(SingleText, RaisesAnOverflowForWhatHasNoText) {
  using Limits = std::numeric_limits<float>;
  for (const float value : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()})
    EXPECT_EQ(FailureOf([&] { SingleText(value); }), overflow) << value;
}

TEST(DoubleText, HasUpToFifteenSignificantDigits) {
  EXPECT_EQ(DoubleText(1.0 / 3), "0.333333333333333");
  EXPECT_EQ(DoubleText(2.0 / 3), "0.666666666666667");
  EXPECT_EQ(DoubleText(0.1 + 0.2), "0.3");
  EXPECT_EQ(DoubleText(123456789012345.0), "123456789012345");
  EXPECT_EQ(DoubleText(3.1F), "3.09999990463257");
}

TEST(DoubleText, UsesAnExponentFromTenToTheFifteenthOn) {
  EXPECT_EQ(DoubleText(999'999'999'999'999.0), "999999999999999");
  EXPECT_EQ(DoubleText(1e15), "1E+15");
  EXPECT_EQ(DoubleText(999'999'999'999'999.9), "1E+15");
  EXPECT_EQ(DoubleText(-1.5e300), "-1.5E+300");
  EXPECT_EQ(DoubleText(std::numeric_limits<double>::max()), "1.79769313486232E+308");
}

TEST(DoubleText, StaysPlainBelowATenThousandthWhileFifteenDecimalsSuffice) {
  EXPECT_EQ(DoubleText(0.000012345), "0.000012345");
  EXPECT_EQ(DoubleText(0.000000000000001), "0.000000000000001");
  EXPECT_EQ(DoubleText(0.00001234567891), "0.00001234567891");
  EXPECT_EQ(DoubleText(0.000012345678912345), "1.2345678912345E-05");
  EXPECT_EQ(DoubleText(0.0000000000000011), "1.1E-15");
  EXPECT_EQ(DoubleText(1e-16), "1E-16");
  EXPECT_EQ(DoubleText(1e-100), "1E-100");
  EXPECT_EQ(DoubleText(0.000123456789012345), "0.000123456789012345");
}

TEST(DoubleText, UsesTheGivenSeparator) { EXPECT_EQ(DoubleText(2.5, ','), "2,5"); }

TEST(DoubleText, IsZeroForBothZeros) {
  EXPECT_EQ(DoubleText(0.0), "0");
  EXPECT_EQ(DoubleText(-0.0), "0");
}

TEST(DoubleText, RaisesAnOverflowForWhatHasNoText) {
  using Limits = std::numeric_limits<double>;
  for (const double value : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
    EXPECT_EQ(FailureOf([&] { DoubleText(value); }), overflow) << value;
    EXPECT_EQ(FailureOf([&] { InvariantText(value); }), overflow) << value;
  }
}

TEST(IntegerText, IsPlainDecimalText) {
  EXPECT_EQ(IntegerText(0), "0");
  EXPECT_EQ(IntegerText(7), "7");
  EXPECT_EQ(IntegerText(-1), "-1");
  EXPECT_EQ(IntegerText(1'000'000), "1000000");
  EXPECT_EQ(IntegerText(std::numeric_limits<std::int64_t>::max()), "9223372036854775807");
  EXPECT_EQ(IntegerText(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(IntegerText, IsReadBackForEverySixteenBitValue) {
  for (int value = -32768; value <= 32767; ++value) {
    const Integer number(value);
    ASSERT_EQ(RoundToInteger(NumericPrefix(IntegerText(number))), value);
    ASSERT_EQ(IntegerText(number), DoubleText(value));
    ASSERT_EQ(IntegerText(number), SingleText(static_cast<float>(value)));
  }
}

TEST(InvariantText, HasALeadingBlankForZeroAndAbove) {
  EXPECT_EQ(InvariantText(1.0), " 1");
  EXPECT_EQ(InvariantText(0.0), " 0");
  EXPECT_EQ(InvariantText(-0.0), " 0");
  EXPECT_EQ(InvariantText(10.0), " 10");
  EXPECT_EQ(InvariantText(-1.0), "-1");
}

TEST(InvariantText, HasNoZeroBeforeThePoint) {
  EXPECT_EQ(InvariantText(0.5), " .5");
  EXPECT_EQ(InvariantText(-0.5), "-.5");
  EXPECT_EQ(InvariantText(0.05), " .05");
  EXPECT_EQ(InvariantText(10.5), " 10.5");
  EXPECT_EQ(InvariantText(-20.25), "-20.25");
}

TEST(InvariantText, UsesAnExponentWhereDisplayTextDoes) {
  EXPECT_EQ(InvariantText(1e15), " 1E+15");
  EXPECT_EQ(InvariantText(-1e-16), "-1E-16");
  EXPECT_EQ(InvariantText(1e7F), " 1E+07");
  EXPECT_EQ(InvariantText(0.00001F), " .00001");
}

TEST(InvariantText, OfASingleHasItsSevenDigits) {
  EXPECT_EQ(InvariantText(4.0F / 7.0F), " .5714286");
  EXPECT_EQ(InvariantText(-3.1F), "-3.1");
}

/// Display text made from the C library's, which has the same digits but uses an exponent for everything below a
/// ten-thousandth.
std::string PlainText(double value, int significant) {
  std::array<char, 64> powers{};
  std::snprintf(powers.data(), powers.size(), "%.*G", significant, value);
  if (value != 0 && std::abs(value) < 0.0001) {
    std::array<char, 64> plain{};
    std::snprintf(plain.data(), plain.size(), "%.*f", significant, value);
    if (std::strtod(plain.data(), nullptr) == std::strtod(powers.data(), nullptr)) {
      std::string text = plain.data();
      text.erase(text.find_last_not_of('0') + 1);
      return text;
    }
  }
  return powers.data();
}

TEST(SingleText, AgreesWithThePlainRuleOnRandomNumbers) {
  std::mt19937 random(2);
  for (int i = 0; i < 200'000; ++i) {
    const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    if (!std::isfinite(value))
      continue;
    ASSERT_EQ(SingleText(value), PlainText(value, 7));
  }
}

TEST(SingleText, AgreesWithThePlainRuleOnShortDecimals) {
  for (int numerator = 1; numerator < 3000; ++numerator) {
    float value = static_cast<float>(numerator) * 1e6F;
    for (int places = 0; places < 18; ++places, value /= 10)
      ASSERT_EQ(SingleText(value), PlainText(value, 7)) << numerator;
  }
}

TEST(DoubleText, AgreesWithThePlainRuleOnRandomNumbers) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 100'000; ++i) {
    const auto value = std::bit_cast<double>(static_cast<std::uint64_t>(random()));
    if (!std::isfinite(value))
      continue;
    ASSERT_EQ(DoubleText(value), PlainText(value, 15));
  }
}

TEST(DoubleText, AgreesWithThePlainRuleOnShortDecimals) {
  for (int numerator = 1; numerator < 3000; ++numerator) {
    double value = numerator * 1e14;
    for (int places = 0; places < 34; ++places, value /= 10)
      ASSERT_EQ(DoubleText(value), PlainText(value, 15)) << numerator;
  }
}

TEST(DoubleText, ReproducesADecimalOfFifteenDigits) {
  std::mt19937_64 random(4);
  for (int i = 0; i < 100'000; ++i) {
    const std::string whole = std::to_string(1 + random() % 9999999);
    const std::string decimals = std::to_string(1 + random() % 9999999);
    const std::string text =
        whole + "." + std::to_string(1 + random() % 9) + decimals.substr(0, decimals.size() - 1) + "7";
    ASSERT_EQ(DoubleText(NumericPrefix(text)), text);
    ASSERT_EQ(InvariantText(NumericPrefix("-" + text)), "-" + text);
  }
}

TEST(InvariantText, IsReadBackByTheNumericPrefix) {
  std::mt19937 random(5);
  for (int i = 0; i < 100'000; ++i) {
    const float value = (static_cast<float>(random() % 2'000'000) - 1'000'000) / 100'000;
    ASSERT_EQ(SinglePrefix(InvariantText(value)), value);
    ASSERT_EQ(SinglePrefix(SingleText(value)), value);
  }
}

}  // namespace
}  // namespace borvane
