#pragma once

#include <cstdint>

namespace borvane {

/// A colour as 0x00BBGGRR, or a colour of the system with the top bit set.
using Color = std::uint32_t;

inline constexpr Color color_highlight_text = 0x8000000E;
inline constexpr Color color_button_text = 0x80000012;
inline constexpr Color color_button_face = 0x8000000F;

}  // namespace borvane
