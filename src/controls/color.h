#pragma once

#include <cstdint>

namespace borvane {

/// A colour as 0x00BBGGRR, or a colour of the system with the top bit set.
using Color = std::uint32_t;

inline constexpr Color color_desktop = 0x80000001;
inline constexpr Color color_active_caption = 0x80000002;
inline constexpr Color color_highlight_text = 0x8000000E;
inline constexpr Color color_button_text = 0x80000012;
inline constexpr Color color_button_face = 0x8000000F;
inline constexpr Color color_inactive_caption_text = 0x80000013;

/// The colour with these parts, from 0 to 255 each.
constexpr Color Rgb(unsigned red, unsigned green, unsigned blue) { return red | green << 8 | blue << 16; }

}  // namespace borvane
