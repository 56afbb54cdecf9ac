#pragma once

#include <Qt>
#include <QtGlobal>

#include "basic/integer.h"

namespace borvane {

/// The program's code of a key: letters have the code of their capital, digits their own, F1 is 112, Esc 27. A key
/// without a code gives 0. A letter that is not Latin has the code of the Latin letter at its place on the keyboard,
/// which `scan_code` identifies where it is known, so that the program's keys are there whatever the user writes in.
int KeyCodeOf(int qt_key, quint32 scan_code = 0);

/// The modifier keys that are down: 1 Shift, 2 Ctrl, 4 Alt, added up.
Integer ShiftStateOf(Qt::KeyboardModifiers modifiers);

}  // namespace borvane
