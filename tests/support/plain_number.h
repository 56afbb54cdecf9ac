#pragma once

#include <string>

namespace borvane::plain {

/// The rule of a numeric prefix once more: of all beginnings that are a number the longest, its value by the C library.
/// It judges the quick reader.
double SaturatedPrefix(std::string text);

}  // namespace borvane::plain
