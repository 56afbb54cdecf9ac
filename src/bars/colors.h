#pragma once

#include "controls/label.h"

namespace borvane {

/// The colour of a code from 0 to 15; black for every other code.
Color ColorFromCode(int code);

}  // namespace borvane
