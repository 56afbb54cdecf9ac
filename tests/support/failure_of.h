#pragma once

#include "basic/failure.h"

namespace borvane {

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
