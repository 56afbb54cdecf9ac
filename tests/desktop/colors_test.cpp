#include "desktop/widgets/colors.h"

#include <gtest/gtest.h>

namespace borvane {
namespace {

/// A palette of which each part can be told from the others.
QPalette Palette() {
  QPalette palette;
  palette.setColor(QPalette::WindowText, QColor(1, 1, 1));
  palette.setColor(QPalette::Inactive, QPalette::WindowText, QColor(2, 2, 2));
  palette.setColor(QPalette::Window, QColor(3, 3, 3));
  palette.setColor(QPalette::Highlight, QColor(4, 4, 4));
  palette.setColor(QPalette::HighlightedText, QColor(5, 5, 5));
  palette.setCurrentColorGroup(QPalette::Active);
  return palette;
}

TEST(ScreenColor, HasRedInItsLowestByte) {
  EXPECT_EQ(ScreenColor(0x0000FF, Palette()), QColor(255, 0, 0));
  EXPECT_EQ(ScreenColor(0x102030, Palette()), QColor(0x30, 0x20, 0x10));
}

TEST(ScreenColor, TakesTheSystemsColoursFromThePalette) {
  EXPECT_EQ(ScreenColor(0x80000001, Palette()), QColor(4, 4, 4));
  EXPECT_EQ(ScreenColor(0x80000002, Palette()), QColor(4, 4, 4));
  EXPECT_EQ(ScreenColor(0x8000000E, Palette()), QColor(5, 5, 5));
  EXPECT_EQ(ScreenColor(color_button_face, Palette()), QColor(3, 3, 3));
  EXPECT_EQ(ScreenColor(color_button_text, Palette()), QColor(1, 1, 1));
  EXPECT_EQ(ScreenColor(0x80000013, Palette()), QColor(2, 2, 2));
}

TEST(ScreenColor, ShowsAnyOtherColourOfTheSystemAsText) {
  for (const Color color : {Color{0x80000000}, Color{0x8000000A}, Color{0x800000FF}, Color{0xFFFFFFFF}})
    EXPECT_EQ(ScreenColor(color, Palette()), QColor(1, 1, 1)) << color;
}

TEST(LineColor, StandsOutOnLightAndDarkGroundAndStaysQuieterThanText) {
  for (const QColor ground : {QColor(0xef, 0xef, 0xef), QColor(0x33, 0x33, 0x33)}) {
    const QPalette palette(ground);
    const int line = LineColor(palette).lightness();
    const int window = palette.color(QPalette::Window).lightness();
    const int text = palette.color(QPalette::WindowText).lightness();

    EXPECT_GT(std::abs(line - window), 30);
    EXPECT_GT(std::abs(line - text), 60);
    EXPECT_TRUE(std::clamp(line, std::min(window, text), std::max(window, text)) == line);
  }
}

}  // namespace
}  // namespace borvane
