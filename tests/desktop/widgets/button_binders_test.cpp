#include <QAccessible>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

/// Whether the mark of a check box or an option button is set, as a screen reader sees it.
bool IsMarked(QWidget &widget) { return QAccessible::queryAccessibleInterface(&widget)->state().checked; }

bool IsHalfMarked(QWidget &widget) { return QAccessible::queryAccessibleInterface(&widget)->state().checkStateMixed; }

class ButtonsOnScreen : public testing::Test {
 protected:
  ButtonsOnScreen() {
    sample->Check1.Click = [this] { rig.note("check " + std::to_string(sample->Check1.Value())); };
    sample->Check1.MouseUp = [this](const MouseState &mouse) {
      rig.note("released " + std::to_string(mouse.button) + " at " + std::to_string(sample->Check1.Value()));
    };
    for (int i = 0; i < sample->Option1.Count(); ++i)
      sample->Option1(i).Click = [this, i] { rig.note("option " + std::to_string(i)); };
    sample->Command1.Click = [this] { rig.note("command"); };
    sample->Picture1.Click = [this] { rig.note("picture"); };
    sample->Picture1.MouseMove = [this](const MouseState &) { rig.note("over picture"); };
    sample->Show();
    Settle();
    rig.events();
  }

  QWidget &check() const { return rig.widget(*sample, "Check1"); }
  QWidget &option(int i) const { return rig.widget(*sample, ("Option1(" + std::to_string(i) + ")").c_str()); }

  /// A click on the mark of a button, where a user clicks.
  static void Click(QWidget &widget) { QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(8, widget.height() / 2)); }

  ScreenRig rig;
};

TEST_F(ButtonsOnScreen, CheckBoxIsTickedAndClearedByClicks) {
  Click(check());
  EXPECT_TRUE(IsMarked(check()));
  Click(check());
  EXPECT_FALSE(IsMarked(check()));

  EXPECT_EQ(rig.events(), Lines({"check 1", "released 1 at 1", "check 0", "released 1 at 0"}));
}

TEST_F(ButtonsOnScreen, CheckBoxIsTickedByTheKeyboardWithoutAMouseRelease) {
  check().setFocus();
  QTest::keyClick(&check(), Qt::Key_Space);

  EXPECT_EQ(rig.events(), Lines({"check 1"}));
}

TEST_F(ButtonsOnScreen, CheckBoxIsTickedAndClearedByAssistiveSoftware) {
  SwitchOver(check());
  Settle();
  EXPECT_TRUE(IsMarked(check()));
  SwitchOver(check());
  Settle();
  EXPECT_FALSE(IsMarked(check()));
  sample->Check1.Value = 2;
  SwitchOver(check());
  Settle();

  EXPECT_EQ(rig.events(), Lines({"check 1", "check 0", "check 2", "check 0"}));
}

TEST_F(ButtonsOnScreen, CheckBoxRaisesOneClickHoweverItChanges) {
  Click(check());
  Settle();
  EXPECT_EQ(rig.events(), Lines({"check 1", "released 1 at 1"}));
  QTest::keyClick(&check(), Qt::Key_Space);
  Settle();
  EXPECT_EQ(rig.events(), Lines({"check 0"}));
  sample->Check1.Value = 2;
  Settle();
  EXPECT_EQ(rig.events(), Lines({"check 2"}));
  sample->Check1.Value = 1;
  Settle();
  EXPECT_EQ(rig.events(), Lines({"check 1"}));
}

TEST_F(ButtonsOnScreen, CheckBoxShowsWhatTheHandlerOfAnAssistedTickSets) {
  sample->Check1.Click = [this] {
    rig.note("check " + std::to_string(sample->Check1.Value()));
    sample->Check1.Value = 0;
  };
  SwitchOver(check());
  Settle();

  EXPECT_FALSE(IsMarked(check()));
  EXPECT_EQ(rig.events(), Lines({"check 1", "check 0"}));
}

TEST_F(ButtonsOnScreen, CheckBoxMayUnloadItsWindowWhenAssistiveSoftwareTicksIt) {
  sample->Check1.Click = [] { sample.Unload(); };
  SwitchOver(check());
  Settle();

  EXPECT_EQ(sample.IfLoaded(), nullptr);
}

TEST_F(ButtonsOnScreen, AssistedTickOfAWindowThatGoesIsForgotten) {
  SwitchOver(check());
  SwitchOver(option(1));
  sample.Unload();
  Settle();

  EXPECT_EQ(sample.IfLoaded(), nullptr);
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ButtonsOnScreen, CheckBoxShowsWhatTheProgramSets) {
  sample->Check1.Value = 1;
  EXPECT_TRUE(IsMarked(check()));
  sample->Check1.Value = 2;
  EXPECT_TRUE(IsHalfMarked(check()));
  sample->Check1.Value = 0;
  EXPECT_FALSE(IsMarked(check()));
}

TEST_F(ButtonsOnScreen, ClickOnAThirdStateClearsTheBoxAndNeverComesBackToIt) {
  sample->Check1.Value = 2;
  rig.events();
  Click(check());
  Click(check());
  Click(check());

  EXPECT_EQ(rig.events(),
            Lines({"check 0", "released 1 at 0", "check 1", "released 1 at 1", "check 0", "released 1 at 0"}));
  EXPECT_FALSE(IsHalfMarked(check()));
}

TEST_F(ButtonsOnScreen, CheckBoxShowsItsCaption) {
  sample->Check1.Caption = "Sound is ";

  EXPECT_EQ(SpokenName(check()), "Sound is ");
}

TEST_F(ButtonsOnScreen, OptionSwitchesItsGroupsOthersOff) {
  Click(option(0));
  Click(option(2));

  EXPECT_FALSE(IsMarked(option(0)));
  EXPECT_TRUE(IsMarked(option(2)));
  EXPECT_EQ(rig.events(), Lines({"option 0", "option 2"}));
}

TEST_F(ButtonsOnScreen, ClickOnTheChosenOptionRaisesNothing) {
  Click(option(1));
  rig.events();
  Click(option(1));

  EXPECT_TRUE(IsMarked(option(1)));
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ButtonsOnScreen, OptionIsChosenByAssistiveSoftware) {
  sample->Option1(0).Value = true;
  rig.events();
  SwitchOver(option(2));
  Settle();
  EXPECT_TRUE(sample->Option1(2).Value());
  EXPECT_FALSE(sample->Option1(0).Value());
  EXPECT_FALSE(IsMarked(option(0)));

  SwitchOver(option(2));
  Settle();
  EXPECT_TRUE(sample->Option1(2).Value());
  EXPECT_TRUE(IsMarked(option(2)));
  EXPECT_EQ(rig.events(), Lines({"option 2"}));
}

TEST_F(ButtonsOnScreen, ArrowKeysChooseTheNextOption) {
  Click(option(0));
  option(0).setFocus();
  QTest::keyClick(&option(0), Qt::Key_Down);
  Settle();

  EXPECT_TRUE(IsMarked(option(1)));
  EXPECT_FALSE(IsMarked(option(0)));
  EXPECT_EQ(rig.events(), Lines({"option 0", "option 1"}));
}

TEST_F(ButtonsOnScreen, OptionsShowWhatTheProgramSetsEvenWhenNoneIsLeft) {
  sample->Option1(1).Value = true;
  EXPECT_TRUE(IsMarked(option(1)));

  sample->Option1(1).Value = false;
  for (int i = 0; i < sample->Option1.Count(); ++i)
    EXPECT_FALSE(IsMarked(option(i)));
}

TEST_F(ButtonsOnScreen, CommandButtonRaisesClickForMouseAndKeyboard) {
  QWidget &button = rig.widget(*sample, "Command1");
  QTest::mouseClick(&button, Qt::LeftButton);
  button.setFocus();
  QTest::keyClick(&button, Qt::Key_Space);

  EXPECT_EQ(rig.events(), Lines({"command", "command"}));
}

TEST_F(ButtonsOnScreen, CommandButtonRaisesNothingWhileItIsDisabled) {
  sample->Command1.Enabled = false;
  QTest::mouseClick(&rig.widget(*sample, "Command1"), Qt::LeftButton);

  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ButtonsOnScreen, CommandButtonShowsItsCaption) {
  sample->Command1.Caption = "Test";

  EXPECT_EQ(SpokenName(rig.widget(*sample, "Command1")), "Test");
}

TEST_F(ButtonsOnScreen, PictureBoxShowsItsColour) {
  QWidget &box = rig.widget(*sample, "Picture1");
  EXPECT_GT(PixelsOf(Picture(box), Qt::red), 250);

  sample->Picture1.BackColor = 0xFF0000;

  EXPECT_GT(PixelsOf(Picture(box), Qt::blue), 250);
}

TEST_F(ButtonsOnScreen, PictureBoxRaisesClickAndMouseMove) {
  QWidget &box = rig.widget(*sample, "Picture1");
  QTest::mouseMove(&box, QPoint(5, 5));
  Settle();
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(5, 5));

  EXPECT_EQ(rig.events().front(), "over picture");
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_EQ(rig.events().back(), "picture");
}

TEST_F(ButtonsOnScreen, TooltipIsTheControls) {
  sample->Command1.ToolTipText = "Closes it";

  EXPECT_EQ(rig.widget(*sample, "Command1").toolTip(), "Closes it");
}

TEST_F(ButtonsOnScreen, FrameShowsItsCaption) {
  QWidget &frame = rig.widget(*sample, "Frame1");
  const QImage before = Picture(frame);
  sample->Frame1.Caption = " History ";

  EXPECT_EQ(SpokenName(frame), " History ");
  EXPECT_NE(Picture(frame), before);
}

}  // namespace
}  // namespace borvane
