#pragma once

#include <cstddef>

namespace borvane {

/// How many bytes memchr has read since the last call. Every search in the standard library's strings uses it; in a
/// program that links this file it replaces the C library's.
std::size_t TakeSearchWork();

}  // namespace borvane
