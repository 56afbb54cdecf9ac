#include "bars/colors.h"

#include <array>

namespace borvane {

namespace {

// Meant (two-codes-of-one-color): each code should have a color of its own. 5 and 10 are the same, since users have
// both stored.
constexpr std::array<Color, 16> colors = {
    Rgb(0, 0, 0),       Rgb(0, 0, 255),   Rgb(255, 0, 0),     Rgb(0, 255, 0),     Rgb(0, 255, 255), Rgb(255, 0, 255),
    Rgb(255, 255, 255), Rgb(255, 255, 0), color_desktop,      Rgb(127, 127, 127), Rgb(255, 0, 255), Rgb(255, 102, 0),
    Rgb(60, 164, 255),  Rgb(255, 0, 170), Rgb(221, 255, 120), Rgb(255, 200, 255),
};

}  // namespace

Color ColorFromCode(int code) {
  if (code < 0 || code >= static_cast<int>(colors.size()))
    return colors[0];
  return colors[static_cast<std::size_t>(code)];
}

}  // namespace borvane
