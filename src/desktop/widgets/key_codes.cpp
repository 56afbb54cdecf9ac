#include "desktop/widgets/key_codes.h"

#include <algorithm>
#include <array>
#include <string_view>

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
    KeyCode{Qt::Key_Insert, 45},   KeyCode{Qt::Key_Delete, 46},  KeyCode{Qt::Key_Menu, 93},
};
// clang-format on

/// The Latin letters of a row of keys, from the first scan code on.
struct LetterRow {
  quint32 first;
  std::string_view letters;
};

/// As Linux numbers the keys. The other systems number them in ways of their own.
#ifdef Q_OS_LINUX
constexpr std::array letter_rows = {LetterRow{24, "QWERTYUIOP"}, LetterRow{38, "ASDFGHJKL"}, LetterRow{52, "ZXCVBNM"}};
#else
constexpr std::array<LetterRow, 0> letter_rows = {};
#endif

/// Whether a key writes in another script, such as Greek or Cyrillic: Qt's number of such a key is its character.
bool IsOfAnotherScript(int qt_key) {
  constexpr int first_greek = 0x370;
  constexpr int first_without_character = 0x01000000;
  return qt_key >= first_greek && qt_key < first_without_character;
}

int LatinLetterAt(quint32 scan_code) {
  for (const LetterRow &row : letter_rows) {
    if (scan_code >= row.first && scan_code < row.first + row.letters.size())
      return row.letters[scan_code - row.first];
  }
  return 0;
}

}  // namespace

int KeyCodeOf(int qt_key, quint32 scan_code) {
  constexpr int code_of_f1 = 112;
  if ((qt_key >= Qt::Key_A && qt_key <= Qt::Key_Z) || (qt_key >= Qt::Key_0 && qt_key <= Qt::Key_9))
    return qt_key;
  if (qt_key >= Qt::Key_F1 && qt_key <= Qt::Key_F16)
    return qt_key - Qt::Key_F1 + code_of_f1;
  if (IsOfAnotherScript(qt_key))
    return LatinLetterAt(scan_code);
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
