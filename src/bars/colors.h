#pragma once

#include "controls/color.h"

namespace borvane {

/// The colour of a code from 0 to 15; black for every other code.
Color ColorFromCode(int code);

}  // namespace borvane
