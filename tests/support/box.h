#pragma once

#include "controls/control.h"

namespace borvane {

/// A container for the controls of a test.
struct Box : Container {};

}  // namespace borvane
