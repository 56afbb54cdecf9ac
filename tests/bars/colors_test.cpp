#include "bars/colors.h"

#include <array>

#include <gtest/gtest.h>

namespace borvane {
namespace {

TEST(ColorFromCode, HasAColorForEachOfTheSixteenCodes) {
  RecordProperty("quirk", "two-codes-of-one-color");
  constexpr std::array<Color, 16> colors = {
      0x000000,   0xFF0000, 0x0000FF, 0x00FF00, 0xFFFF00, 0xFF00FF, 0xFFFFFF, 0x00FFFF,
      0x80000001, 0x7F7F7F, 0xFF00FF, 0x0066FF, 0xFFA43C, 0xAA00FF, 0x78FFDD, 0xFFC8FF,
  };
  for (std::size_t code = 0; code < colors.size(); ++code)
    EXPECT_EQ(ColorFromCode(static_cast<int>(code)), colors[code]) << code;
}

TEST(ColorFromCode, IsBlackForEveryOtherCode) {
  for (const int code : {-32768, -1, 16, 99, 32767})
    EXPECT_EQ(ColorFromCode(code), 0U) << code;
}

}  // namespace
}  // namespace borvane
