#pragma once

#include <cstddef>

namespace borvane {

/// How many allocations this program has made with new so far.
std::size_t Allocations();

}  // namespace borvane
