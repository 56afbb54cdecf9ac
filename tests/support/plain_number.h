#pragma once

#include <string>

namespace borvane::plain {

/// The rule of a numeric prefix again: the longest prefix that is a number, its value by the C library. A reference for
/// the quick reader.
double SaturatedPrefix(std::string text);

}  // namespace borvane::plain
