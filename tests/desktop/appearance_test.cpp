#include "desktop/appearance.h"

#include <QApplication>
#include <QLabel>

#include <gtest/gtest.h>

#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class DarkWindows : public testing::Test {
 protected:
  DarkWindows() {
    sample->Label1.ForeColor = 0x80000008;  // the text of windows
    sample->Show();
  }
  ~DarkWindows() override { QApplication::setPalette({}); }
  DarkWindows(const DarkWindows &) = delete;
  DarkWindows &operator=(const DarkWindows &) = delete;

  /// The colour of most of the window.
  QColor ground() const { return Picture(rig.window(*sample)).pixelColor(1, 1); }

  QColor text() const { return rig.widget(*sample, "Label1").palette().color(QPalette::WindowText); }

  ScreenRig rig;
};

TEST_F(DarkWindows, ComeAndGoWithThePreferenceWhileTheyAreOpen) {
  const QColor light_ground = ground();
  const QColor dark_text = text();
  ASSERT_GT(light_ground.lightness(), 200);
  ASSERT_LT(dark_text.lightness(), 50);

  PreferDark(true);
  EXPECT_EQ(ground(), DarkPalette().color(QPalette::Window));
  EXPECT_EQ(text(), DarkPalette().color(QPalette::WindowText));

  PreferDark(false);
  EXPECT_EQ(ground(), light_ground);
  EXPECT_EQ(text(), dark_text);
}

TEST_F(DarkWindows, StayDarkWhenThePreferenceIsReportedTwice) {
  PreferDark(true);
  PreferDark(true);

  EXPECT_EQ(ground(), DarkPalette().color(QPalette::Window));
}

TEST(DarkPalette, HasReadableTextPaleOnlyWhereItIsDisabled) {
  const QPalette palette = DarkPalette();
  for (const auto &[text, surface] :
       {std::pair(QPalette::WindowText, QPalette::Window), std::pair(QPalette::Text, QPalette::Base),
        std::pair(QPalette::ButtonText, QPalette::Button), std::pair(QPalette::ToolTipText, QPalette::ToolTipBase),
        std::pair(QPalette::HighlightedText, QPalette::Highlight)}) {
    EXPECT_GT(Contrast(palette.color(text), palette.color(surface)), 4.5) << text;
    EXPECT_LT(palette.color(QPalette::Disabled, text).lightness(), 200) << text;
  }
}

}  // namespace
}  // namespace borvane
