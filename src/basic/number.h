#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "basic/integer.h"

namespace borvane {

/// The number at the start of `text`: leading blanks skipped, a sign, digits with one decimal point, an exponent only
/// when "E" or "e" is followed by (a sign and) a digit. It ends at the first character that cannot continue it; 0 when
/// there is none. Raises an overflow beyond double precision; what is too small is 0. Never looks at the locale.
double NumericPrefix(std::string_view text);

/// NumericPrefix, but what lies beyond double precision is an infinity of its sign and raises nothing.
double SaturatedPrefix(std::string_view text);

/// NumericPrefix, then rounded to single precision; raises an overflow beyond it.
float SinglePrefix(std::string_view text);

/// The number that all of `text` is, rounded to single precision: NumericPrefix with nothing after it but blanks.
/// Raises a type mismatch when it is anything else, and an overflow beyond single precision.
float StrictSingle(std::string_view text);

/// Whether all of `text` is a number, as StrictSingle reads it, of any size.
bool IsNumeric(std::string_view text);

/// `value` rounded to a whole number, an exact half to the even neighbour. Raises an overflow when that is outside 16
/// bits.
Integer RoundToInteger(double value);

/// RoundToInteger to 32 bits.
std::int32_t RoundToLong(double value);

// Numbers as text. The display form has a leading zero and the decimal separator that is given. From 10 to the power of
// the significant digits on it is like 1.234568E+07, and so it is below 0.0001 when the plain form needs more decimals
// than there are significant digits. Minus zero is 0. Computing fails before it reaches an infinity; should one come
// here nonetheless, it has no text and raises an overflow.

/// Up to seven significant digits, without trailing zeros.
std::string SingleText(float value, char decimal_separator = '.');

/// Up to fifteen significant digits, without trailing zeros.
std::string DoubleText(double value, char decimal_separator = '.');

/// A whole number as plain decimal text.
std::string IntegerText(std::int64_t value);

/// The invariant form: a decimal point, no zero in front of it, a leading blank for zero and above.
std::string InvariantText(double value);

/// The invariant form of a single-precision number, with its seven digits.
std::string InvariantText(float value);

}  // namespace borvane
