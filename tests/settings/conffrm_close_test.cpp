#include <gtest/gtest.h>

#include "bars/Form1.h"
#include "bars/bar_content.h"
#include "bars/newTagFrm.h"
#include "bars/paint_bar.h"
#include "core/program.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

TEST(CloseButton, RunsItsStepsInOrder) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, 2);
  rig.watch(conffrm->Timer1, conffrm->Timer1.Enabled, "Timer1");
  rig.watch(frmRecords->Toolbar1.Buttons(2), frmRecords->Toolbar1.Buttons(2).Value, "Buttons(2)");
  rig.clear_trace();
  rig.click(conffrm->Command2);
  EXPECT_EQ(rig.trace(), (Lines{"set Timer1=false", "set Buttons(2)=0", "write LogAll=True", "write EdgeDetect= 0",
                                "hide conffrm"}));
  EXPECT_NE(conffrm.IfLoaded(), nullptr);
}

/// What "Close" does with that face up, from the settings window's opening on.
Lines ClosedWith(std::uint8_t face) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, 2);
  Module1->BarMode = face;
  rig.watch(conffrm->Timer1, conffrm->Timer1.Enabled, "Timer1");
  rig.watch(frmRecords->Toolbar1.Buttons(2), frmRecords->Toolbar1.Buttons(2).Value, "Buttons(2)");
  rig.clear_trace();
  rig.click(conffrm->Command2);
  return rig.trace({"set", "load", "write", "hide"});
}

TEST(CloseButton, UpdatesTheOtherBarThanTheOneThatIsUp) {
  RecordProperty("quirk", "close-repaints-the-other-bar");
  EXPECT_EQ(ClosedWith(face_short_bar),
            (Lines{"set Timer1=false", "load newTagFrm", "write LogAll=True", "write EdgeDetect= 0", "hide conffrm"}));
  EXPECT_EQ(ClosedWith(face_long_bar),
            (Lines{"set Timer1=false", "load Form1", "write LogAll=True", "write EdgeDetect= 0", "hide conffrm"}));
  EXPECT_EQ(ClosedWith(3),
            (Lines{"set Timer1=false", "load Form1", "write LogAll=True", "write EdgeDetect= 0", "hide conffrm"}));
}

TEST(CloseButton, LeavesTheToolbarsButtonDownBesideABar) {
  RecordProperty("quirk", "settings-button-stays-down-beside-a-bar");
  for (const std::uint8_t face : {face_short_bar, face_long_bar}) {
    WatchingRig rig;
    rig.press(frmRecords->Toolbar1, 2);
    Module1->BarMode = face;
    rig.click(conffrm->Command2);
    EXPECT_EQ(frmRecords->Toolbar1.Buttons(2).Value(), 1);
    rig.clear_trace();
    rig.press(frmRecords->Toolbar1, 2);
    EXPECT_EQ(rig.trace({"show"}), Lines()) << "the next press only releases it";
  }
}

TEST(CloseButton, LoadsTheOtherBarWithAllThatItsLoadDoes) {
  WatchingRig rig;
  Module1->BarMode = face_short_bar;
  rig.click(conffrm->Command2);
  EXPECT_EQ(Module1->BarMode, face_long_bar);

  Module1->LastAlertTime = "";
  rig.click(conffrm->Command2);
  EXPECT_EQ(Module1->BarMode, face_short_bar);
  EXPECT_EQ(Module1->LastAlertTime, "02-07-2018 01:30:14");
  EXPECT_TRUE(frmRecords->Timer1.Enabled()) << "the switch of the short bar";
}

TEST(CloseButton, PaintsTheBarThatIsNotUp) {
  constexpr Color plain = 0x80000013;
  constexpr Color red = 0x0000FF;
  for (const std::uint8_t face : {face_short_bar, face_long_bar}) {
    WatchingRig rig;
    rig.happen(UpdateShortBar);
    rig.happen(PaintBar);
    conffrm->Check3.Value = 1;
    conffrm->Picture1(0).BackColor = red;
    Module1->BarMode = face;
    rig.click(conffrm->Command2);
    EXPECT_EQ(Form1->Label1(0).ForeColor(), face == face_short_bar ? plain : red);
    EXPECT_EQ(newTagFrm->Label1(0).ForeColor(), face == face_short_bar ? red : plain);
    EXPECT_FALSE(Form1->IsShown());
    EXPECT_FALSE(newTagFrm->IsShown());
  }
}

TEST(CloseButton, StoresTheChosenOptions) {
  WatchingRig rig;
  conffrm->Option2(1).Value = true;
  conffrm->Option1(2).Value = true;
  rig.click(conffrm->Command2);
  EXPECT_EQ(rig.store()["LogAll"], "False");
  EXPECT_EQ(rig.store()["EdgeDetect"], " 2");
}

TEST(CloseButton, StoresNoEdgeOptionWhenNoneIsChosen) {
  WatchingRig rig;
  conffrm->Option1(0).Value = false;
  rig.click(conffrm->Command2);
  EXPECT_EQ(rig.trace({"write"}), Lines{"write LogAll=True"});
}

TEST(CloseButton, ComparesNoArea) {
  RecordProperty("quirk", "close-compares-no-area");
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, 1);
  rig.press(frmRecords->Toolbar1, 2);
  rig.choose(conffrm->Combo2, "Seattle Area");
  rig.clear_trace();
  rig.click(conffrm->Command2);
  EXPECT_TRUE(rig.trace({"request"}).empty());
  EXPECT_EQ(Module1->RefreshCount, 699) << "the clock starts the refresh";
}

}  // namespace
}  // namespace borvane
