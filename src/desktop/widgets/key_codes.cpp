#include "desktop/widgets/key_codes.h"

#include <algorithm>
#include <array>

namespace borvane {

namespace {

struct KeyCode {
  int qt_key;
  int code;
};

// clang-format off
constexpr std::array named_keys = {
    KeyCode{Qt::Key_Backspace, 8}, KeyCode{Qt::Key_Tab, 9},       KeyCode{Qt::Key_Backtab, 9},  KeyCode{Qt::Key_Return, 13},
    KeyCode{Qt::Key_Enter, 13},    KeyCode{Qt::Key_Shift, 16},    KeyCode{Qt::Key_Control, 17}, KeyCode{Qt::Key_Alt, 18},
    KeyCode{Qt::Key_Pause, 19},    KeyCode{Qt::Key_CapsLock, 20}, KeyCode{Qt::Key_Escape, 27},  KeyCode{Qt::Key_Space, 32},
    KeyCode{Qt::Key_PageUp, 33},   KeyCode{Qt::Key_PageDown, 34}, KeyCode{Qt::Key_End, 35},     KeyCode{Qt::Key_Home, 36},
    KeyCode{Qt::Key_Left, 37},     KeyCode{Qt::Key_Up, 38},       KeyCode{Qt::Key_Right, 39},   KeyCode{Qt::Key_Down, 40},
    KeyCode{Qt::Key_Insert, 45},   KeyCode{Qt::Key_Delete, 46},
};
// clang-format on

}  // namespace

int KeyCodeOf(int qt_key) {
  constexpr int code_of_f1 = 112;
  if ((qt_key >= Qt::Key_A && qt_key <= Qt::Key_Z) || (qt_key >= Qt::Key_0 && qt_key <= Qt::Key_9))
    return qt_key;
  if (qt_key >= Qt::Key_F1 && qt_key <= Qt::Key_F16)
    return qt_key - Qt::Key_F1 + code_of_f1;
  const auto *key =
      std::find_if(named_keys.begin(), named_keys.end(), [&](const KeyCode &named) { return named.qt_key == qt_key; });
  return key == named_keys.end() ? 0 : key->code;
}

Integer ShiftStateOf(Qt::KeyboardModifiers modifiers) {
  constexpr int shift = 1;
  constexpr int control = 2;
  constexpr int alt = 4;
  int state = 0;
  state |= modifiers.testFlag(Qt::ShiftModifier) ? shift : 0;
  state |= modifiers.testFlag(Qt::ControlModifier) ? control : 0;
  state |= modifiers.testFlag(Qt::AltModifier) ? alt : 0;
  return state;
}

}  // namespace borvane
