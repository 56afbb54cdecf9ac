#pragma once

#include <cstddef>

namespace borvane {

/// How many bytes memchr has looked at since the last call. Every search of the standard library's texts goes through
/// it; a program that links this file has it in place of the C library's.
std::size_t TakeSearchWork();

}  // namespace borvane
