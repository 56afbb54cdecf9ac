#include "basic/number.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "basic/failure.h"
#include "support/plain_number.h"

// Any text as a number: the quick reader returns what the plain one returns, and the number's text reads back as the
// same number, as far as its digits go.

namespace {

using namespace borvane;

void Require(bool fact) {
  if (!fact)
    std::abort();
}

/// The plain rule is slow for longer texts.
constexpr std::size_t longest = 400;

/// Whether `a` and `b` differ at most by one in the last of `digits` digits.
bool IsNear(double a, double b, int digits) { return std::abs(a - b) <= std::abs(b) * std::pow(10.0, 1 - digits); }

void CheckTexts(double value) {
  const std::string text = DoubleText(value);
  const double read = SaturatedPrefix(text);
  Require(std::isinf(read) || IsNear(read, value, 15));
  Require(std::isinf(read) || DoubleText(read) == text);
  Require(SaturatedPrefix(InvariantText(value)) == read);
  const auto single = static_cast<float>(value);
  if (!std::isinf(single) && std::abs(single) > 1e-30F)
    Require(IsNear(SaturatedPrefix(SingleText(single)), single, 7));
}

/// A value outside 16 bits raises an overflow; any other is rounded by less than one.
void CheckRounding(double value) {
  try {
    Require(std::abs(int{RoundToInteger(value)} - value) <= 0.5);
  } catch (const RuntimeError &) {
    Require(value < -32768.4 || value > 32767.4);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  if (size > longest)
    return 0;
  const std::string text(reinterpret_cast<const char *>(data), size);
  // The plain rule's C library stops at a zero byte; the quick one reads it and finds that it is not a digit.
  const double value = SaturatedPrefix(text);
  const double plain_value = plain::SaturatedPrefix(text);
  Require(value == plain_value && std::signbit(value) == std::signbit(plain_value));
  CheckRounding(value);
  if (std::isfinite(value))
    CheckTexts(value);
  return 0;
}
