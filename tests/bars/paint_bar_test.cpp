#include "bars/paint_bar.h"

#include <gtest/gtest.h>

#include "support/program/bar_rig.h"

namespace borvane {
namespace {

TEST(PaintBar, PaintsBothGroupsInTheColorsOfTheBoxesWhileTagsAreColored) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  for (int i = 0; i < 3; ++i)
    conffrm->Picture1(i).BackColor = static_cast<Color>(i + 1);
  conffrm->Check3.Value = 1;
  rig.happen(PaintBar);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(bar.Label1(i).ForeColor(), static_cast<Color>(i + 1));
    EXPECT_EQ(bar.Label2(i).ForeColor(), static_cast<Color>(i + 1));
    EXPECT_EQ(bar.Label1(i).Bold(), i < 2) << i;
    EXPECT_EQ(bar.Label2(i).Bold(), i < 2) << i;
  }
}

TEST(PaintBar, PaintsPlainLabelsInTheColorOfTheSystem) {
  for (const int value : {0, 2}) {
    BarRig rig;
    LongBarForm &bar = rig.open_long_bar();
    conffrm->Check3.Value = 1;
    rig.happen(PaintBar);
    conffrm->Check3.Value = value;
    rig.happen(PaintBar);
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(bar.Label1(i).ForeColor(), 0x80000013U);
      EXPECT_EQ(bar.Label2(i).ForeColor(), 0x80000013U);
      EXPECT_FALSE(bar.Label1(i).Bold());
      EXPECT_FALSE(bar.Label2(i).Bold());
    }
  }
}

TEST(PaintBar, LaysOutTheLeftGroupFromTheLeft) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  bar.Label1(0).Caption = "12345";
  bar.Label1(1).Caption = "1234567";
  bar.Label1(0).Left = 60;
  rig.happen(PaintBar);
  EXPECT_EQ(bar.Label1(0).Left(), 60);
  EXPECT_EQ(bar.Label1(1).Left(), 60 + 450 + 100);
  EXPECT_EQ(bar.Label1(2).Left(), 610 + 630 + 100);
}

TEST(PaintBar, LaysOutTheRightGroupFromTheCheckBox) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  bar.Label2(0).Caption = "12345";
  bar.Label2(1).Caption = "1234567";
  bar.Label2(2).Caption = "123";
  bar.Check1.Left = 10000;
  rig.happen(PaintBar);
  EXPECT_EQ(bar.Label2(2).Left(), 10000 - 270 - 200);
  EXPECT_EQ(bar.Label2(1).Left(), 9530 - 630 - 100);
  EXPECT_EQ(bar.Label2(0).Left(), 8800 - 450 - 100);
}

TEST(PaintBar, ReadsTheWidthsOfTheNewWeight) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  bar.Label1(0).Caption = "12345";
  bar.Label2(1).Caption = "1234567";
  bar.Label2(2).Caption = "123";
  bar.Check1.Left = 10000;
  conffrm->Check3.Value = 1;
  rig.happen(PaintBar);
  EXPECT_EQ(bar.Label1(1).Left(), bar.Label1(0).Left() + 500 + 100);
  EXPECT_EQ(bar.Label2(2).Left(), 10000 - 270 - 200);
  EXPECT_EQ(bar.Label2(1).Left(), 9530 - 700 - 100);
}

TEST(PaintBar, LetsLongTextsOverlap) {
  RecordProperty("quirk", "long-bar-groups-may-overlap");
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  bar.Label1(1).Caption = std::string(200, 'x');
  bar.Label2(1).Caption = std::string(200, 'x');
  rig.happen(PaintBar);
  EXPECT_GT(bar.Label1(1).Left() + bar.Label1(1).Width(), bar.Label2(1).Left());
  EXPECT_LT(bar.Label2(0).Left(), 0);
}

TEST(PaintBar, ChangesNothingWhenNothingHasChanged) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  rig.happen(PaintBar);
  for (int i = 0; i < 3; ++i) {
    for (Label *label : {&bar.Label1(i), &bar.Label2(i)}) {
      rig.watch(*label, label->Left, "Left");
      rig.watch(*label, label->Width, "Width");
      rig.watch(*label, label->Bold, "Bold");
      rig.watch(*label, label->ForeColor, "ForeColor");
    }
  }
  rig.happen(PaintBar);
  EXPECT_TRUE(rig.trace().empty());
}

}  // namespace
}  // namespace borvane
