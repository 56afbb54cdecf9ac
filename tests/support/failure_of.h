#pragma once

#include "basic/failure.h"

namespace borvane {

// The numbers of the run-time errors that tests expect.
inline constexpr int invalid_argument = 5;
inline constexpr int overflow = 6;
inline constexpr int subscript = 9;
inline constexpr int type_mismatch = 13;
inline constexpr int file_access = 75;
inline constexpr int object_not_set = 91;

/// The number of the run-time error that `action` raises; 0 when it raises none.
template <typename Action>
int FailureOf(Action action) {
  try {
    action();
  } catch (const RuntimeError &error) {
    return error.number();
  }
  return 0;
}

}  // namespace borvane
