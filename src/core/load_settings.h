#pragma once

#include <string>

#include "basic/integer.h"

namespace borvane {

/// Brings the stored values into the controls of conffrm, makes the client identifier on a first run and moves the run
/// counters. Returns 1 in the run that moves `noBother` from 2 to 1, else 0. Raises an overflow when the number of
/// runs, a stored list position or the edge option does not fit 16 bits, and a subscript failure when there is no such
/// option.
Integer LoadSettings();

/// A new client identifier: "1" to "999999", drawn at random. It reveals nothing about the computer.
std::string MakeMacID();

}  // namespace borvane
