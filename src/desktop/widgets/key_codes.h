#pragma once

#include <Qt>

#include "basic/integer.h"

namespace borvane {

/// The program's code of a key: letters have the code of their capital, digits their own, F1 is 112, Esc 27. A key
/// without a code gives 0.
int KeyCodeOf(int qt_key);

/// The modifier keys that are down: 1 Shift, 2 Ctrl, 4 Alt, added up.
Integer ShiftStateOf(Qt::KeyboardModifiers modifiers);

}  // namespace borvane
