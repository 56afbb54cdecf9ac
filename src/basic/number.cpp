#include "basic/number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "basic/failure.h"
#include "basic/text.h"

namespace borvane {

namespace {

bool StartsWithDigit(std::string_view text) { return !text.empty() && text.front() >= '0' && text.front() <= '9'; }

bool Skip(std::string_view &text, char c) {
  if (!text.starts_with(c))
    return false;
  text.remove_prefix(1);
  return true;
}

/// Skips a sign; true for a minus.
bool SkipSign(std::string_view &text) {
  if (Skip(text, '-'))
    return true;
  Skip(text, '+');
  return false;
}

/// A number as it was read: "0." and `digits`, times ten to the power of `exponent`. The first digit is not 0; zero has
/// none.
struct Decimal {
  std::string digits;
  std::int64_t exponent = 0;
};

/// A decimal that lies exactly halfway between two doubles has at most 767 digits. Of what follows them only whether it
/// is zero counts, so one more digit represents all the rest.
constexpr std::size_t digits_that_count = 768;

/// No text in memory has so many digits that they could bring a number with this power of ten back into range.
constexpr std::int64_t largest_exponent = 1'000'000'000'000'000;

void Append(Decimal &number, char digit) {
  if (number.digits.size() < digits_that_count)
    number.digits += digit;
  else if (digit != '0')
    number.digits.back() = '1';
}

/// Takes the digits and the decimal point from the front of `text`.
void TakeDigits(std::string_view &text, Decimal &number) {
  for (; StartsWithDigit(text); text.remove_prefix(1)) {
    if (number.digits.empty() && text.front() == '0')
      continue;
    Append(number, text.front());
    ++number.exponent;
  }
  Skip(text, '.');
  for (; StartsWithDigit(text); text.remove_prefix(1)) {
    if (number.digits.empty() && text.front() == '0')
      --number.exponent;
    else
      Append(number, text.front());
  }
}

/// The power of ten that `text` starts with, "E" in front; 0 when there is none.
std::int64_t ExponentAt(std::string_view text) {
  if (!Skip(text, 'E') && !Skip(text, 'e'))
    return 0;
  const bool negative = SkipSign(text);
  std::int64_t exponent = 0;
  for (; StartsWithDigit(text); text.remove_prefix(1))
    exponent = std::min(exponent * 10 + (text.front() - '0'), largest_exponent);
  return negative ? -exponent : exponent;
}

/// The nearest double; an infinity above the largest, 0 below the smallest.
double ValueOf(const Decimal &number) {
  if (number.digits.empty())
    return 0;
  const std::string text = "." + number.digits + "e" + IntegerText(number.exponent);
  double value = 0;
  if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc{})
    return value;
  return number.exponent > 0 ? std::numeric_limits<double>::infinity() : 0;
}

/// Both a whole number of so many digits and the power of ten are exact, so that their quotient is the nearest double.
constexpr std::array<double, 15> powers_of_ten = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6, 1e7,
                                                  1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14};

/// The number that `text` begins with, without a sign, when it is as short as people write numbers; nothing for any
/// other. Most numbers are, and this costs a tenth of the general way.
std::optional<double> ShortNumber(std::string_view text) {
  constexpr std::size_t longest = powers_of_ten.size();
  std::int64_t digits = 0;
  std::size_t decimals = 0;
  bool has_point = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (i == longest)
      return {};
    if (c >= '0' && c <= '9') {
      digits = digits * 10 + (c - '0');
      decimals += has_point ? 1 : 0;
    } else if (c == '.' && !has_point) {
      has_point = true;
    } else if (c == 'e' || c == 'E') {
      return {};
    } else {
      break;
    }
  }
  return static_cast<double>(digits) / powers_of_ten[decimals];
}

/// Skips digits; returns whether there was one.
bool SkipDigits(std::string_view &text) {
  const std::size_t size = text.size();
  text.remove_prefix(std::min(text.find_first_not_of("0123456789"), size));
  return text.size() < size;
}

/// Whether `text` is a number from its first character to its last.
bool IsNumber(std::string_view text) {
  SkipSign(text);
  const bool has_whole = SkipDigits(text);
  const bool has_decimals = Skip(text, '.') && SkipDigits(text);
  if (!has_whole && !has_decimals)
    return false;
  if (Skip(text, 'E') || Skip(text, 'e')) {
    SkipSign(text);
    return SkipDigits(text) && text.empty();
  }
  return text.empty();
}

double Rounded(double value, double lowest, double highest) {
  // The processor rounds as it starts: to the nearest, a half to even. Written so that what is no number fails too.
  const double rounded = std::nearbyint(value);
  if (!(rounded >= lowest && rounded <= highest))
    Fail(Failure::Overflow);
  return rounded;
}

/// The significant digits of a number: the first in front of the point, times ten to the power of `exponent`. Zero has
/// none.
struct Figures {
  std::string digits;
  int exponent = 0;
};

/// `value`, without its sign, rounded to `significant` digits; zeros at the end are dropped.
template <typename Float>
Figures FiguresOf(Float value, int significant) {
  if (!std::isfinite(value))
    Fail(Failure::Overflow);

  std::array<char, 32> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(value),
                                    std::chars_format::scientific, significant - 1);
  const std::string_view text(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
  const std::size_t mark = text.find('e');

  Figures figures{std::string(text.substr(0, mark)), static_cast<int>(ExponentAt(text.substr(mark)))};
  figures.digits.erase(1, 1);
  figures.digits.erase(figures.digits.find_last_not_of('0') + 1);
  return figures;
}

std::string PowerForm(Figures figures, char decimal_separator) {
  if (figures.digits.size() > 1)
    figures.digits.insert(1, 1, decimal_separator);
  const std::string power = IntegerText(std::abs(figures.exponent));
  return figures.digits + (figures.exponent < 0 ? "E-" : "E+") + (power.size() < 2 ? "0" : "") + power;
}

std::string PlainForm(Figures figures, char decimal_separator) {
  if (figures.exponent < 0) {
    figures.digits.insert(0, static_cast<std::size_t>(-figures.exponent), '0');
    figures.exponent = 0;
  }
  const auto whole = static_cast<std::size_t>(figures.exponent) + 1;
  if (figures.digits.size() > whole)
    figures.digits.insert(whole, 1, decimal_separator);
  else
    figures.digits.append(whole - figures.digits.size(), '0');
  return figures.digits;
}

template <typename Float>
std::string DisplayText(Float value, int significant, char decimal_separator) {
  const Figures figures = FiguresOf(value, significant);
  const int decimals = static_cast<int>(figures.digits.size()) - 1 - figures.exponent;
  const bool large = figures.exponent >= significant;
  const bool small = figures.exponent < -4 && decimals > significant;
  const std::string text =
      large || small ? PowerForm(figures, decimal_separator) : PlainForm(figures, decimal_separator);
  return value < 0 ? "-" + text : text;
}

/// Turns display text with a point into invariant text.
std::string Invariant(std::string text) {
  const std::size_t sign = text.starts_with('-') ? 1 : 0;
  if (text.compare(sign, 2, "0.") == 0)
    text.erase(sign, 1);
  return sign == 0 ? " " + text : text;
}

constexpr int single_digits = 7;
constexpr int double_digits = 15;

}  // namespace

double NumericPrefix(std::string_view text) {
  const double value = SaturatedPrefix(text);
  if (std::isinf(value))
    Fail(Failure::Overflow);
  return value;
}

double SaturatedPrefix(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  // A sign without digits is no number, and zero has no sign then.
  const bool has_sign = SkipSign(text);
  const bool negative = has_sign && StartsWithDigit(text.starts_with('.') ? text.substr(1) : text);
  if (const std::optional<double> number = ShortNumber(text))
    return negative ? -*number : *number;
  Decimal number;
  TakeDigits(text, number);
  number.exponent += ExponentAt(text);
  return negative ? -ValueOf(number) : ValueOf(number);
}

float SinglePrefix(std::string_view text) {
  // Halfway between the largest float and the next power of two: from here on the nearest float would be an infinity.
  constexpr double beyond_single = 0x1.ffffffp127;
  const double value = NumericPrefix(text);
  if (std::abs(value) >= beyond_single)
    Fail(Failure::Overflow);
  return static_cast<float>(value);
}

float StrictSingle(std::string_view text) {
  if (!IsNumeric(text))
    Fail(Failure::TypeMismatch);
  return SinglePrefix(Trim(text));
}

bool IsNumeric(std::string_view text) { return IsNumber(Trim(text)); }

Integer RoundToInteger(double value) {
  using Limits = std::numeric_limits<std::int16_t>;
  return {static_cast<std::int16_t>(Rounded(value, Limits::min(), Limits::max()))};
}

std::int32_t RoundToLong(double value) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(Rounded(value, Limits::min(), Limits::max()));
}

std::string SingleText(float value, char decimal_separator) {
  return DisplayText(value, single_digits, decimal_separator);
}

std::string DoubleText(double value, char decimal_separator) {
  return DisplayText(value, double_digits, decimal_separator);
}

std::string IntegerText(std::int64_t value) {
  std::array<char, 20> buffer{};
  return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

std::string InvariantText(double value) { return Invariant(DoubleText(value)); }

std::string InvariantText(float value) { return Invariant(SingleText(value)); }

}  // namespace borvane
