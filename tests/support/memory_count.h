#pragma once

#include <cstddef>

namespace borvane {

/// How many pieces of memory this program has taken with new so far.
std::size_t PiecesOfMemory();

}  // namespace borvane
