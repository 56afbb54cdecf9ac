#include <QToolButton>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class ToolbarOnScreen : public testing::Test {
 protected:
  ToolbarOnScreen() {
    sample->Toolbar1.ButtonClick = [this](int number) {
      rig.note("button " + std::to_string(number) + " at " + std::to_string(sample->Toolbar1.Buttons(number).Value()));
    };
    sample->Show();
    Settle();
    rig.events();
  }

  QToolButton &button(const char *picture) const { return rig.widget<QToolButton>(*sample, picture); }

  ScreenRig rig;
};

TEST_F(ToolbarOnScreen, TwoStateButtonGoesDownAndUp) {
  const QImage up = Picture(button("refresh"));
  QTest::mouseClick(&button("refresh"), Qt::LeftButton);
  EXPECT_TRUE(button("refresh").isChecked());
  EXPECT_NE(Picture(button("refresh")), up);
  QTest::mouseClick(&button("refresh"), Qt::LeftButton);
  EXPECT_FALSE(button("refresh").isChecked());

  EXPECT_EQ(rig.events(), Lines({"button 1 at 1", "button 1 at 0"}));
}

TEST_F(ToolbarOnScreen, HandlerMayPutTheButtonUpAgain) {
  sample->Toolbar1.ButtonClick = [this](int number) {
    rig.note(button("refresh").isChecked() ? "down" : "up");
    sample->Toolbar1.Buttons(number).Value = 0;
  };
  for (int click = 0; click < 2; ++click) {
    QTest::mouseClick(&button("refresh"), Qt::LeftButton);
    EXPECT_FALSE(button("refresh").isChecked());
  }

  EXPECT_EQ(rig.events(), Lines({"down", "down"}));
}

TEST_F(ToolbarOnScreen, TwoStateButtonIsPressedByAssistiveSoftware) {
  SwitchOver(button("refresh"));
  Settle();
  EXPECT_TRUE(button("refresh").isChecked());
  SwitchOver(button("refresh"));
  Settle();
  EXPECT_FALSE(button("refresh").isChecked());

  EXPECT_EQ(rig.events(), Lines({"button 1 at 1", "button 1 at 0"}));
}

TEST_F(ToolbarOnScreen, TwoStateButtonIsPressedOnceHoweverItGoesDown) {
  QTest::mouseClick(&button("refresh"), Qt::LeftButton);
  Settle();
  EXPECT_EQ(rig.events(), Lines({"button 1 at 1"}));
  QTest::keyClick(&button("refresh"), Qt::Key_Space);
  Settle();
  EXPECT_EQ(rig.events(), Lines({"button 1 at 0"}));
}

TEST_F(ToolbarOnScreen, HandlerMayPutUpTheButtonThatAssistiveSoftwarePresses) {
  sample->Toolbar1.ButtonClick = [this](int number) {
    rig.note(button("refresh").isChecked() ? "down" : "up");
    sample->Toolbar1.Buttons(number).Value = 0;
  };
  for (int time = 0; time < 2; ++time) {
    SwitchOver(button("refresh"));
    Settle();
    EXPECT_FALSE(button("refresh").isChecked());
  }

  EXPECT_EQ(rig.events(), Lines({"down", "down"}));
}

TEST_F(ToolbarOnScreen, AssistedPressOfAWindowThatGoesIsForgotten) {
  SwitchOver(button("refresh"));
  sample.Unload();
  Settle();

  EXPECT_EQ(sample.IfLoaded(), nullptr);
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ToolbarOnScreen, ShowsWhatTheProgramSetsAndRaisesNothing) {
  sample->Toolbar1.Buttons(1).Value = 1;
  Settle();

  EXPECT_TRUE(button("refresh").isChecked());
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ToolbarOnScreen, PlainButtonNeverStaysDown) {
  QTest::mouseClick(&button("quit"), Qt::LeftButton);

  EXPECT_FALSE(button("quit").isChecked());
  EXPECT_EQ(rig.events(), Lines({"button 3 at 0"}));
}

TEST_F(ToolbarOnScreen, DisabledButtonDoesNothingUntilItIsEnabled) {
  QTest::mouseClick(&button("longbar"), Qt::LeftButton);
  EXPECT_EQ(rig.events(), Lines());

  sample->Toolbar1.Buttons(2).Enabled = true;
  QTest::mouseClick(&button("longbar"), Qt::LeftButton);
  EXPECT_EQ(rig.events(), Lines({"button 2 at 0"}));
}

TEST_F(ToolbarOnScreen, ButtonsAreReachedAndPressedWithTheKeyboard) {
  EXPECT_TRUE(button("quit").focusPolicy() & Qt::TabFocus);
  QTest::keyClick(&button("quit"), Qt::Key_Space);

  EXPECT_EQ(rig.events(), Lines({"button 3 at 0"}));
}

TEST_F(ToolbarOnScreen, ButtonsAreNamedByTheirToolTips) {
  EXPECT_EQ(SpokenName(button("refresh")), "Auto Refresh");
  EXPECT_EQ(button("refresh").toolTip(), "Auto Refresh");
  EXPECT_EQ(SpokenName(button("quit")), "Quit");
}

TEST_F(ToolbarOnScreen, EachButtonHasAPictureOfItsOwn) {
  sample->Toolbar1.Buttons(2).Enabled = true;
  const QImage refresh = Picture(button("refresh"));
  const QImage longbar = Picture(button("longbar"));
  const QImage quit = Picture(button("quit"));

  const QColor line = button("quit").palette().color(QPalette::ButtonText);
  EXPECT_GT(PixelsOf(refresh, line), 20);
  EXPECT_GT(PixelsOf(longbar, line), 20);
  EXPECT_GT(PixelsOf(quit, line), 20);
  EXPECT_NE(refresh, longbar);
  EXPECT_NE(longbar, quit);
}

}  // namespace
}  // namespace borvane
