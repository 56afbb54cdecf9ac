#include "controls/buttons.h"

#include <string>

#include <gtest/gtest.h>

#include "basic/failure.h"
#include "controls/control_array.h"
#include "controls/frame.h"
#include "support/box.h"

namespace borvane {
namespace {

TEST(CheckBox, HasTheBackgroundAndTheSpokenNameOfItsDesign) {
  Box box;
  const CheckBox check(box, "Check1", {.BackColor = Rgb(128, 0, 128), .SpokenName = "Menu"});
  const CheckBox plain(box, "Check2", {.Caption = "Log"});
  EXPECT_EQ(check.back_color(), 0x800080U);
  EXPECT_EQ(check.spoken_name(), "Menu");
  EXPECT_EQ(plain.back_color(), color_button_face);
  EXPECT_EQ(plain.spoken_name(), "");
}

TEST(CheckBox, RaisesClickWhenItsValueChanges) {
  Box box;
  CheckBox check{box, "Check1", {.Caption = "Log"}};
  int clicks = 0;
  check.Click = [&] { ++clicks; };
  check.Value = 1;
  EXPECT_EQ(clicks, 1);
  check.Value = 2;
  EXPECT_EQ(clicks, 2);
  check.Value = 0;
  EXPECT_EQ(clicks, 3);
}

TEST(CheckBox, RaisesNoClickWhenItsValueStays) {
  Box box;
  CheckBox check{box, "Check5", {.Value = 1}};
  int clicks = 0;
  check.Click = [&] { ++clicks; };
  check.Value = 1;
  EXPECT_EQ(clicks, 0);
}

TEST(CheckBox, RaisesNoClickForItsOtherProperties) {
  Box box;
  CheckBox check{box, "Check1", {}};
  int clicks = 0;
  check.Click = [&] { ++clicks; };
  check.Caption = "Other";
  check.Enabled = false;
  check.Width = 200;
  EXPECT_EQ(clicks, 0);
}

TEST(CheckBox, HasItsNewValueInsideClick) {
  Box box;
  CheckBox check{box, "Check1", {}};
  int seen = -1;
  check.Click = [&] { seen = check.Value(); };
  check.Value = 1;
  EXPECT_EQ(seen, 1);
}

TEST(OptionButton, SwitchesTheOthersOfItsContainerOff) {
  Box box;
  ControlArray<OptionButton, 3> options{box, "Option1", {{{.Value = true}, {}, {}}}};
  options(2).Value = true;
  EXPECT_FALSE(options(0).Value());
  EXPECT_FALSE(options(1).Value());
  EXPECT_TRUE(options(2).Value());
}

TEST(OptionButton, LeavesTheOptionsOfOtherContainersAlone) {
  Box box;
  Frame frame{box, "Frame1", {}};
  ControlArray<OptionButton, 2> outside{box, "Option2", {{{.Value = true}, {}}}};
  ControlArray<OptionButton, 2> inside{frame, "Option1", {}};
  CheckBox check{box, "Check1", {.Value = 1}};
  inside(1).Value = true;
  EXPECT_TRUE(outside(0).Value());
  EXPECT_EQ(check.Value(), 1);
  outside(1).Value = true;
  EXPECT_TRUE(inside(1).Value());
  EXPECT_EQ(check.Value(), 1);
}

TEST(OptionButton, RaisesClickWhenSwitchedOnAndNotWhenSwitchedOff) {
  Box box;
  ControlArray<OptionButton, 2> options{box, "Option2", {}};
  std::string clicks;
  options(0).Click = [&] { clicks += "0"; };
  options(1).Click = [&] { clicks += "1"; };
  options(0).Value = true;
  options(1).Value = true;
  EXPECT_EQ(clicks, "01");
  options(1).Value = false;
  EXPECT_EQ(clicks, "01");
  EXPECT_FALSE(options(0).Value());
}

TEST(OptionButton, RaisesNoClickWhenItIsOnAlready) {
  Box box;
  OptionButton option{box, "Option2", {.Value = true}};
  int clicks = 0;
  option.Click = [&] { ++clicks; };
  option.Value = true;
  EXPECT_EQ(clicks, 0);
}

TEST(OptionButton, RaisesNoClickForItsOtherProperties) {
  Box box;
  ControlArray<OptionButton, 2> options{box, "Option2", {{{.Value = true}, {}}}};
  int clicks = 0;
  options(0).Click = [&] { ++clicks; };
  options(1).Value = true;
  options(0).Value = true;
  EXPECT_EQ(clicks, 1);
  options(0).Caption = "Other";
  options(0).Enabled = false;
  EXPECT_EQ(clicks, 1);
}

TEST(OptionButton, HasSwitchedTheOthersOffWhenClickComes) {
  Box box;
  ControlArray<OptionButton, 2> options{box, "Option2", {{{.Value = true}, {}}}};
  bool other = true;
  options(1).Click = [&] { other = options(0).Value(); };
  options(1).Value = true;
  EXPECT_FALSE(other);
}

}  // namespace
}  // namespace borvane
