#pragma once

namespace borvane {

// The codes of the keys that the program's windows act on. A letter has the code of its capital.

inline constexpr int key_escape = 27;
inline constexpr int key_left = 37;
inline constexpr int key_up = 38;
inline constexpr int key_right = 39;
inline constexpr int key_down = 40;
inline constexpr int key_menu = 93;  // the key that opens a window's menu
inline constexpr int key_f1 = 112;
inline constexpr int key_f10 = 121;

/// What Shift adds to the state of the keys.
inline constexpr int shift_mask = 1;

}  // namespace borvane
