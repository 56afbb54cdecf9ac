#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "basic/number.h"
#include "support/failure_of.h"
#include "support/plain_number.h"

namespace borvane {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(NumericPrefix, ReadsDigitsWithOneDecimalPoint) {
  EXPECT_EQ(NumericPrefix("700"), 700);
  EXPECT_EQ(NumericPrefix("3.5"), 3.5);
  EXPECT_EQ(NumericPrefix(".5"), 0.5);
  EXPECT_EQ(NumericPrefix("5."), 5);
  EXPECT_EQ(NumericPrefix("007"), 7);
}

TEST(NumericPrefix, ReadsASign) {
  EXPECT_EQ(NumericPrefix("-118.25"), -118.25);
  EXPECT_EQ(NumericPrefix("+5"), 5);
  EXPECT_EQ(NumericPrefix("-.5"), -0.5);
}

TEST(NumericPrefix, SkipsLeadingBlanks) {
  EXPECT_EQ(NumericPrefix(" 1"), 1);
  EXPECT_EQ(NumericPrefix("     -1"), -1);
}

TEST(NumericPrefix, SkipsNothingElseAtTheStart) {
  for (const char *text : {"\t5", "\n5", "\r5", " \t5", "\2405", "x5", "$5", "(5)"})
    EXPECT_EQ(NumericPrefix(text), 0) << text;
}

TEST(NumericPrefix, IsZeroWhereThereIsNoNumber) {
  for (const char *text :
       {"",    " ",   "abc", ".",   "-",    "+",        "-.",  "+.",   "..5", "--5", "+-5", "- 5", "e5",
        ".e5", "-e5", "E",   "inf", "-inf", "infinity", "nan", "&H10", "&O7", ",5",  "N/A", "Mag"})
    EXPECT_EQ(NumericPrefix(text), 0) << text;
}

TEST(NumericPrefix, EndsAtTheFirstCharacterThatCannotContinueIt) {
  EXPECT_EQ(NumericPrefix("1.2.3"), 1.2);
  EXPECT_EQ(NumericPrefix("34.123N"), 34.123);
  EXPECT_EQ(NumericPrefix("4.1*"), 4.1);
  EXPECT_EQ(NumericPrefix("5-3"), 5);
  EXPECT_EQ(NumericPrefix("1.5,2"), 1.5);
  EXPECT_EQ(NumericPrefix("2,5"), 2);
  EXPECT_EQ(NumericPrefix("12%"), 12);
  EXPECT_EQ(NumericPrefix(std::string_view("1\0002", 3)), 1);
}

TEST(NumericPrefix, EndsAtABlankATabOrALineEnd) {
  EXPECT_EQ(NumericPrefix("1 2"), 1);
  EXPECT_EQ(NumericPrefix("1\t2"), 1);
  EXPECT_EQ(NumericPrefix("1\n2"), 1);
  EXPECT_EQ(NumericPrefix("1\r\n2"), 1);
  EXPECT_EQ(NumericPrefix("1. 5"), 1);
  EXPECT_EQ(NumericPrefix("1 .5"), 1);
  EXPECT_EQ(NumericPrefix("1 e5"), 1);
  EXPECT_EQ(NumericPrefix("1e 5"), 1);
}

TEST(NumericPrefix, ReadsAnExponentWithItsSign) {
  EXPECT_EQ(NumericPrefix("1e5"), 100'000);
  EXPECT_EQ(NumericPrefix("1E5"), 100'000);
  EXPECT_EQ(NumericPrefix("1e+5"), 100'000);
  EXPECT_EQ(NumericPrefix("25e-1"), 2.5);
  EXPECT_EQ(NumericPrefix("-2.5E01x"), -25);
  EXPECT_EQ(NumericPrefix("5.e1"), 50);
  EXPECT_EQ(NumericPrefix(".5e1"), 5);
}

TEST(NumericPrefix, ReadsAnExponentOnlyWithADigit) {
  for (const char *text : {"1e", "1E", "1e+", "1e-", "1e+x", "1ex", "1e.5", "1e--5", "1e+-5", "1e +5"})
    EXPECT_EQ(NumericPrefix(text), 1) << text;
}

TEST(NumericPrefix, EndsAfterTheExponent) {
  EXPECT_EQ(NumericPrefix("1e2.5"), 100);
  EXPECT_EQ(NumericPrefix("1e2e3"), 100);
}

TEST(NumericPrefix, AcceptsNoOtherExponentMark) {
  EXPECT_EQ(NumericPrefix("1D5"), 1);
  EXPECT_EQ(NumericPrefix("1d5"), 1);
  EXPECT_EQ(NumericPrefix("0x10"), 0);
  EXPECT_EQ(NumericPrefix("1p5"), 1);
}

TEST(NumericPrefix, RaisesAnOverflowBeyondDoublePrecision) {
  EXPECT_EQ(NumericPrefix("1.7976931348623157e308"), std::numeric_limits<double>::max());
  EXPECT_EQ(NumericPrefix("-1.7976931348623157e308"), std::numeric_limits<double>::lowest());
  // The largest double and half of its last unit: below it still rounds down.
  EXPECT_EQ(NumericPrefix("1.797693134862315807e308"), std::numeric_limits<double>::max());
  for (const char *text :
       {"1.797693134862315808e308", "1e309", "-1e309", "1e999", "1e99999999999999999999", "0.001e312", "123456e304"})
    EXPECT_EQ(FailureOf([&] { NumericPrefix(text); }), overflow) << text;
}

TEST(NumericPrefix, IsZeroBelowDoublePrecision) {
  EXPECT_EQ(NumericPrefix("5e-324"), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(NumericPrefix("3e-324"), std::numeric_limits<double>::denorm_min());
  for (const char *text : {"2e-324", "1E-400", "-1E-400", "1e-99999999999999999999", "1234e-330", "0.0001e-322"})
    EXPECT_EQ(NumericPrefix(text), 0) << text;
}

TEST(NumericPrefix, IsZeroForZeroWithAnyExponent) {
  for (const char *text : {"0e999", "0.000e99999999999999999999", "-0e999", "0E-999", "0"})
    EXPECT_EQ(NumericPrefix(text), 0) << text;
}

TEST(NumericPrefix, RoundsAnExactHalfToEven) {
  const std::string half_above_one = "1.00000000000000011102230246251565404236316680908203125";
  const double next = std::nextafter(1.0, 2.0);
  EXPECT_EQ(NumericPrefix(half_above_one), 1);
  EXPECT_EQ(NumericPrefix(half_above_one + std::string(2000, '0')), 1);
  EXPECT_EQ(NumericPrefix(half_above_one + "1"), next);
}

TEST(NumericPrefix, CountsEveryDigitHoweverFarRight) {
  const std::string half_above_one = "1.00000000000000011102230246251565404236316680908203125";
  const double next = std::nextafter(1.0, 2.0);
  for (const std::size_t zeros : {700U, 712U, 713U, 714U, 715U, 716U, 717U, 800U, 1'000'000U})
    EXPECT_EQ(NumericPrefix(half_above_one + std::string(zeros, '0') + "1"), next) << zeros;
}

TEST(NumericPrefix, ReadsAMegabyteOfDigits) {
  const std::string zeros(1'000'000, '0');
  const std::string nines(1'000'000, '9');
  EXPECT_EQ(NumericPrefix(zeros), 0);
  EXPECT_EQ(NumericPrefix(zeros + "12"), 12);
  EXPECT_EQ(NumericPrefix("0." + nines), 1);
  EXPECT_EQ(NumericPrefix("0." + zeros + "25"), 0);
  EXPECT_EQ(NumericPrefix("0." + zeros + "25e1000001"), 2.5);
  EXPECT_EQ(NumericPrefix("25" + zeros + "e-1000001"), 2.5);
  EXPECT_EQ(NumericPrefix("25e" + zeros + "1"), 250);
  EXPECT_EQ(NumericPrefix("25e-" + nines), 0);
  EXPECT_EQ(NumericPrefix(std::string(1'000'000, ' ') + "7"), 7);
  EXPECT_EQ(FailureOf([&] { NumericPrefix(nines); }), overflow);
  EXPECT_EQ(FailureOf([&] { NumericPrefix("1e" + nines); }), overflow);
}

TEST(SaturatedPrefix, IsAnInfinityBeyondDoublePrecision) {
  EXPECT_EQ(SaturatedPrefix("1e999"), infinity);
  EXPECT_EQ(SaturatedPrefix("-1e999"), -infinity);
  EXPECT_EQ(SaturatedPrefix(std::string(400, '9')), infinity);
}

TEST(SaturatedPrefix, IsTheNumericPrefixOtherwise) {
  EXPECT_EQ(SaturatedPrefix(" 3.5x"), 3.5);
  EXPECT_EQ(SaturatedPrefix("-1E-400"), 0);
  EXPECT_EQ(SaturatedPrefix("abc"), 0);
  EXPECT_EQ(SaturatedPrefix("1.7976931348623157e308"), std::numeric_limits<double>::max());
}

TEST(SinglePrefix, RoundsToSinglePrecision) {
  EXPECT_EQ(SinglePrefix(" 3.1M"), 3.1F);
  EXPECT_EQ(SinglePrefix("0.1"), 0.1F);
  EXPECT_EQ(SinglePrefix("16777217"), 16777216.0F);
  EXPECT_EQ(SinglePrefix("abc"), 0.0F);
}

TEST(SinglePrefix, RaisesAnOverflowBeyondSinglePrecision) {
  EXPECT_EQ(SinglePrefix("3.4028235e38"), std::numeric_limits<float>::max());
  EXPECT_EQ(SinglePrefix("3.40282356e38"), std::numeric_limits<float>::max());
  EXPECT_EQ(SinglePrefix("-3.40282356e38"), std::numeric_limits<float>::lowest());
  // Halfway between the largest single and the next power of two, and a double below it.
  EXPECT_EQ(FailureOf([] { SinglePrefix("340282356779733661637539395458142568448"); }), overflow);
  EXPECT_EQ(SinglePrefix("340282356779733641000000000000000000000"), std::numeric_limits<float>::max());
  for (const char *text : {"3.40282357e38", "-3.40282357e38", "3.5e38", "1e39", "1e308", "1e999", "-1e999"})
    EXPECT_EQ(FailureOf([&] { SinglePrefix(text); }), overflow) << text;
}

TEST(SinglePrefix, IsZeroBelowSinglePrecision) {
  EXPECT_EQ(SinglePrefix("1e-45"), std::numeric_limits<float>::denorm_min());
  EXPECT_EQ(SinglePrefix("1e-46"), 0.0F);
  EXPECT_EQ(SinglePrefix("1e-400"), 0.0F);
}

TEST(RoundToInteger, RoundsToTheNearestWholeNumber) {
  EXPECT_EQ(RoundToInteger(3.4), 3);
  EXPECT_EQ(RoundToInteger(3.6), 4);
  EXPECT_EQ(RoundToInteger(-3.4), -3);
  EXPECT_EQ(RoundToInteger(-3.6), -4);
  EXPECT_EQ(RoundToInteger(0.49999999999999994), 0);
}

TEST(RoundToInteger, RoundsAHalfToEven) {
  EXPECT_EQ(RoundToInteger(0.5), 0);
  EXPECT_EQ(RoundToInteger(1.5), 2);
  EXPECT_EQ(RoundToInteger(2.5), 2);
  EXPECT_EQ(RoundToInteger(3.5), 4);
  EXPECT_EQ(RoundToInteger(-0.5), 0);
  EXPECT_EQ(RoundToInteger(-1.5), -2);
  EXPECT_EQ(RoundToInteger(-2.5), -2);
  EXPECT_EQ(RoundToInteger(32766.5), 32766);
}

TEST(RoundToInteger, RaisesAnOverflowOutsideSixteenBits) {
  EXPECT_EQ(RoundToInteger(32767.49), 32767);
  EXPECT_EQ(RoundToInteger(-32768.5), -32768);
  for (const double value : {32767.5, 32768.0, -32768.51, -32769.0, 1e300, -1e300, infinity, -infinity,
                             std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(FailureOf([&] { RoundToInteger(value); }), overflow) << value;
}

TEST(RoundToLong, RoundsAHalfToEven) {
  EXPECT_EQ(RoundToLong(2.5), 2);
  EXPECT_EQ(RoundToLong(3.5), 4);
  EXPECT_EQ(RoundToLong(-2.5), -2);
  EXPECT_EQ(RoundToLong(99999.6), 100000);
}

TEST(RoundToLong, RaisesAnOverflowOutsideThirtyTwoBits) {
  EXPECT_EQ(RoundToLong(2147483647.4), 2147483647);
  EXPECT_EQ(RoundToLong(-2147483648.5), std::numeric_limits<std::int32_t>::min());
  for (const double value : {2147483647.5, 2147483648.0, -2147483648.6, -2147483649.0, infinity, -infinity,
                             std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(FailureOf([&] { RoundToLong(value); }), overflow) << value;
}

TEST(RoundToLong, AgreesWithAPlainRule) {
  for (int quarters = -400; quarters <= 400; ++quarters) {
    const int below = static_cast<int>(std::floor(quarters / 4.0));
    const int rest = quarters - 4 * below;
    const int even = below % 2 == 0 ? below : below + 1;
    const int expected = rest < 2 ? below : rest > 2 ? below + 1 : even;
    ASSERT_EQ(RoundToLong(quarters / 4.0), expected) << quarters / 4.0;
    ASSERT_EQ(RoundToInteger(quarters / 4.0), expected) << quarters / 4.0;
  }
}

TEST(SaturatedPrefix, AgreesWithThePlainRuleOnEveryShortText) {
  constexpr std::string_view alphabet = " +-.eE01\t";
  std::string text;
  const auto walk = [&](const auto &self, std::size_t length) -> void {
    ASSERT_EQ(SaturatedPrefix(text), plain::SaturatedPrefix(text)) << "'" << text << "'";
    if (length == 0)
      return;
    for (const char c : alphabet) {
      text.push_back(c);
      ASSERT_NO_FATAL_FAILURE(self(self, length - 1));
      text.pop_back();
    }
  };
  walk(walk, 6);
}

TEST(SaturatedPrefix, AgreesWithThePlainRuleOnRandomNumbers) {
  std::mt19937 random(1);
  const auto draw = [&](unsigned n) { return static_cast<unsigned>(random() % n); };
  const auto digits = [&](unsigned n) {
    std::string text;
    for (unsigned i = draw(n); i > 0; --i)
      text += static_cast<char>('0' + draw(10));
    return text;
  };
  for (int i = 0; i < 20'000; ++i) {
    std::string text = std::string(draw(3), ' ') + (draw(2) == 0 ? "-" : "") + digits(30) + "." + digits(30);
    if (draw(2) == 0)
      text += "e" + std::string(draw(2) == 0 ? "-" : "") + std::to_string(draw(340));
    text += "x";
    ASSERT_EQ(SaturatedPrefix(text), plain::SaturatedPrefix(text)) << text;
  }
}

TEST(NumericPrefix, RoundsEveryHalfwayPointToEven) {
  // Between adjacent numbers of few binary digits the halfway point has an exact decimal form.
  for (int i = 1; i < 2000; ++i) {
    const double whole = 9007199254740992.0 + 2.0 * i;
    const std::string half = std::to_string(9007199254740992 + 2 * i + 1);
    const double above = whole + 2;
    ASSERT_EQ(NumericPrefix(half), i % 2 == 0 ? whole : above) << half;
    ASSERT_EQ(NumericPrefix(half + ".0000000000000000000000000000001"), above) << half;
  }
}

/// Sets a decimal comma for the length of a test: always in the C++ locale, and in the C library's where the machine
/// has such a locale.
class CommaEverywhere {
 public:
  CommaEverywhere() {
    for (const char *name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "fr_FR"}) {
      if (std::setlocale(LC_ALL, name) != nullptr)
        break;
    }
  }
  CommaEverywhere(const CommaEverywhere &) = delete;
  CommaEverywhere &operator=(const CommaEverywhere &) = delete;
  ~CommaEverywhere() {
    std::locale::global(before_);
    std::setlocale(LC_ALL, "C");
  }

 private:
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };

  // The locale owns the facet.
  std::locale before_ = std::locale::global(std::locale(std::locale::classic(), new Comma));
};

TEST(Locale, DoesNotReachNumbers) {
  const CommaEverywhere comma;
  EXPECT_EQ(NumericPrefix("1234.5"), 1234.5);
  EXPECT_EQ(NumericPrefix("1,5"), 1);
  EXPECT_EQ(SingleText(1234.5F), "1234.5");
  EXPECT_EQ(DoubleText(1234567.5), "1234567.5");
  EXPECT_EQ(InvariantText(1234.5), " 1234.5");
  EXPECT_EQ(IntegerText(1234567), "1234567");
}

}  // namespace
}  // namespace borvane
