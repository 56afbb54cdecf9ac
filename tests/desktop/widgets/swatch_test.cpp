#include "desktop/widgets/swatch.h"

#include <QApplication>
#include <array>

#include <gtest/gtest.h>

#include "bars/colors.h"
#include "desktop/widgets/colors.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

TEST(Swatch, HasASpokenNameForTheColorOfEachCode) {
  constexpr std::array<const char *, 17> names = {
      "black", "blue",    "red",    "green",      "cyan", "magenta",     "white",      "yellow", "desktop colour",
      "grey",  "magenta", "orange", "light blue", "pink", "light green", "light pink", "black"};
  Swatch swatch(nullptr);
  for (std::size_t code = 0; code < names.size(); ++code) {
    swatch.ShowColor(ColorFromCode(static_cast<int>(code)));
    EXPECT_EQ(SpokenName(swatch), names[code]) << code;
  }
}

TEST(Swatch, IsNamedByItsLabelAndItsColor) {
  Swatch swatch(nullptr);
  swatch.SetLabel("Magnitude");
  swatch.ShowColor(ColorFromCode(2));
  EXPECT_EQ(SpokenName(swatch), "Magnitude: red");
  swatch.SetLabel("Time");
  EXPECT_EQ(SpokenName(swatch), "Time: red");
  swatch.ShowColor(0x123456);
  EXPECT_EQ(SpokenName(swatch), "Time") << "a colour without a name";
}

TEST(Swatch, ShowsTheColorOfEachCodeInsideAFrame) {
  Swatch swatch(nullptr);
  swatch.resize(17, 17);
  for (int code = 0; code <= 16; ++code) {
    swatch.ShowColor(ColorFromCode(code));
    const QColor shown = ScreenColor(ColorFromCode(code), swatch.palette());
    const QImage picture = Picture(swatch);
    EXPECT_EQ(picture.pixelColor(picture.rect().center()), shown) << code;
    EXPECT_EQ(picture.pixelColor(1, 8), swatch.palette().color(QPalette::Window)) << code << ": a ring around it";
  }
}

}  // namespace
}  // namespace borvane
