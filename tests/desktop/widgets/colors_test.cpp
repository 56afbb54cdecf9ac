#include "desktop/widgets/colors.h"

#include <gtest/gtest.h>

#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

/// A palette of which each part differs from the others.
QPalette Palette() {
  QPalette palette;
  palette.setColor(QPalette::WindowText, QColor(1, 1, 1));
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
}

TEST(ScreenColor, OfTheBarsTextIsReadableOnBlackAndBlueInEveryPalette) {
  for (const QColor window : {QColor(Qt::white), QColor(45, 45, 45)}) {
    const QColor text = ScreenColor(0x80000013, QPalette(window));
    EXPECT_GE(Contrast(text, Qt::black), 4.5);
    EXPECT_GE(Contrast(text, QColor(0, 90, 245)), 4.5);
  }
}

TEST(ScreenColor, ShowsAnyOtherColourOfTheSystemAsText) {
  for (const Color color : {Color{0x80000000}, Color{0x8000000A}, Color{0x800000FF}, Color{0xFFFFFFFF}})
    EXPECT_EQ(ScreenColor(color, Palette()), QColor(1, 1, 1)) << color;
}

TEST(TextColor, OfTheSystemGivesWayWhereItCannotBeRead) {
  EXPECT_EQ(TextColor(color_button_text, Qt::white, Palette()), QColor(1, 1, 1));
  EXPECT_EQ(TextColor(color_button_text, Qt::black, Palette()), QColor(Qt::white));
  EXPECT_EQ(TextColor(0x80000013, Qt::white, Palette()), QColor(Qt::black));
}

TEST(TextColor, OfTheUserIsShownEvenWhereItCannotBeRead) {
  EXPECT_EQ(TextColor(0x000000, Qt::black, Palette()), QColor(Qt::black));
  EXPECT_EQ(TextColor(0x00FFFF, Qt::black, Palette()), QColor(Qt::yellow));
}

TEST(BackgroundPalette, HasReadableTextThatIsPalerWhenDisabled) {
  for (const Color background : {Color{0x000000}, Color{0x301800}, Color{0xF55A00}, Color{0xFFFFFF}}) {
    const QPalette palette = BackgroundPalette(background, Palette());
    const QColor window = palette.color(QPalette::Window);
    const double contrast = Contrast(palette.color(QPalette::Active, QPalette::WindowText), window);
    EXPECT_EQ(window, ScreenColor(background, Palette()));
    EXPECT_GE(contrast, 4.5) << background;
    EXPECT_LT(Contrast(palette.color(QPalette::Disabled, QPalette::WindowText), window), contrast) << background;
  }
}

TEST(BackgroundPalette, LeavesTheUsualBackgroundToTheDesktop) {
  EXPECT_EQ(BackgroundPalette(color_button_face, Palette()).resolveMask(), 0u);
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
