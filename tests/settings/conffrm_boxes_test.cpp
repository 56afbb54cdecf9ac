#include <gtest/gtest.h>

#include "bars/Form1.h"
#include "bars/newTagFrm.h"
#include "core/program.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

TEST(Text1, IsStoredWhenItIsLeft) {
  WatchingRig rig;
  rig.type(conffrm->Text1, "4.");
  rig.type(conffrm->Text1, "4.2");
  EXPECT_FALSE(rig.store().Has("Alert"));
  rig.leave(conffrm->Text1);
  EXPECT_EQ(rig.trace({"write"}), Lines{"write Alert=4.2"});
}

TEST(Text2, IsStoredUnchangedWhenItIsLeft) {
  WatchingRig rig;
  rig.type(conffrm->Text2, "abc");
  EXPECT_FALSE(rig.store().Has("Refresh"));
  rig.leave(conffrm->Text2);
  EXPECT_EQ(rig.trace({"write"}), Lines{"write Refresh=abc"});
  EXPECT_EQ(frmRecords->Timer1.Interval(), 700);
}

TEST(Text2, IsStoredEmptyToo) {
  WatchingRig rig;
  rig.type(conffrm->Text2, "");
  rig.leave(conffrm->Text2);
  EXPECT_EQ(rig.store()["Refresh"], "");
}

TEST(Text2, IsStoredWhateverItHolds) {
  for (const char *text : {"0", "-5", "1e9", "abc", " 60 ", "\xB5,5\xFF"}) {
    WatchingRig rig;
    rig.type(conffrm->Text2, text);
    rig.leave(conffrm->Text2);
    EXPECT_EQ(rig.trace(), Lines{std::string("write Refresh=") + text});
    EXPECT_EQ(rig.end_status(), std::nullopt);
  }
}

TEST(Text3, MovesTheBarThatIsUpWhenItIsLeft) {
  for (const std::uint8_t face : {face_short_bar, face_long_bar}) {
    WatchingRig rig;
    Module1->BarMode = face;
    rig.type(conffrm->Text3, "150.5 twips");
    EXPECT_TRUE(rig.trace().empty());
    rig.leave(conffrm->Text3);
    EXPECT_EQ(rig.trace({"load", "write"}), Lines{face == face_short_bar ? "load Form1" : "load newTagFrm"});
    EXPECT_EQ(face == face_short_bar ? Form1->Top() : newTagFrm->Top(), 150.5F);
  }
}

TEST(Text3, MovesTheBarToTheTopWhenItIsLeftUntouched) {
  RecordProperty("quirk", "leaving-bar-top-moves-the-bar");
  WatchingRig rig;
  Module1->BarMode = face_short_bar;
  Form1->Top = 300;
  rig.leave(conffrm->Text3);
  EXPECT_EQ(Form1->Top(), 0);
}

TEST(Text3, MovesTheBarToTheTopForATextWithoutANumber) {
  for (const char *text : {"", "abc"}) {
    WatchingRig rig;
    Module1->BarMode = face_long_bar;
    newTagFrm->Top = 300;
    rig.type(conffrm->Text3, text);
    rig.leave(conffrm->Text3);
    EXPECT_EQ(newTagFrm->Top(), 0) << text;
  }
}

TEST(Text3, DoesNothingWithoutABar) {
  WatchingRig rig;
  rig.type(conffrm->Text3, "150");
  rig.leave(conffrm->Text3);
  EXPECT_TRUE(rig.trace().empty());
}

TEST(Text4, MovesTheShortBarAndIsStoredAtEachChange) {
  WatchingRig rig;
  Module1->BarMode = face_short_bar;
  rig.type(conffrm->Text4, "-1");
  EXPECT_EQ(Form1->Left(), -1);
  rig.type(conffrm->Text4, "-15 x");
  EXPECT_EQ(Form1->Left(), -15);
  EXPECT_EQ(rig.trace({"load", "write"}), (Lines{"load Form1", "write smBarLeft=-1", "write smBarLeft=-15 x"}));
}

TEST(Text4, DoesNothingWithAnyOtherFace) {
  for (const std::uint8_t face : {face_records, face_long_bar}) {
    WatchingRig rig;
    Module1->BarMode = face;
    rig.type(conffrm->Text4, "150");
    rig.leave(conffrm->Text4);
    EXPECT_TRUE(rig.trace().empty()) << int{face};
  }
}

TEST(Text4, IsEnabledBesideALabelThatNeverIs) {
  RecordProperty("quirk", "bar-left-label-is-always-grey");
  for (const std::uint8_t face : {face_records, face_short_bar, face_long_bar}) {
    WatchingRig rig;
    Module1->BarMode = face;
    rig.type(conffrm->Text4, "150");
    rig.leave(conffrm->Text4);
    EXPECT_TRUE(conffrm->Text4.Enabled()) << int{face};
    EXPECT_FALSE(conffrm->Label1(6).Enabled()) << int{face};
  }
}

TEST(Text4, LoadsNoBarAtAStartThatPutsTheAlertMagnitudeIntoIt) {
  Rig rig;
  rig.store()["Alert"] = "4.5";
  rig.start();
  EXPECT_EQ(conffrm->Text4.Text(), "4.5");
  EXPECT_EQ(Form1.IfLoaded(), nullptr);
  EXPECT_FALSE(rig.store().Has("smBarLeft"));
}

/// The first is beyond single precision, the others are beyond the pixels of all screens.
constexpr const char *beyond_every_place[] = {"1e39", "1e11", "-1e11"};

TEST(BarPlaceBoxes, EndTheProgramForANumberThatNoPlaceCanTake) {
  RecordProperty("quirk", "bar-place-beyond-its-range-ends-the-program");
  for (const char *text : beyond_every_place) {
    for (const bool is_top : {true, false}) {
      WatchingRig rig;
      Module1->BarMode = face_short_bar;
      TextBox &box = is_top ? conffrm->Text3 : conffrm->Text4;
      rig.type(box, text);
      if (is_top)
        rig.leave(box);
      EXPECT_EQ(rig.trace({"error"}), Lines{"error report 6 Overflow"}) << text;
      EXPECT_EQ(rig.end_status(), 1);
      EXPECT_FALSE(rig.store().Has("smBarLeft"));
    }
  }
}

TEST(BarPlaceBoxes, EndTheProgramForATopOfTheLongBarAndForNoLeftOfIt) {
  for (const char *text : beyond_every_place) {
    WatchingRig rig;
    Module1->BarMode = face_long_bar;
    rig.type(conffrm->Text4, text);
    EXPECT_TRUE(rig.trace().empty()) << text;
    rig.type(conffrm->Text3, text);
    rig.leave(conffrm->Text3);
    EXPECT_EQ(rig.trace({"error"}), Lines{"error report 6 Overflow"}) << text;
    EXPECT_EQ(rig.end_status(), 1);
    EXPECT_FALSE(rig.store().Has("smBarLeft"));
  }
}

TEST(Text7, IsStoredWhenItIsLeft) {
  WatchingRig rig;
  rig.type(conffrm->Text7, "x 450");
  EXPECT_TRUE(rig.trace().empty());
  rig.leave(conffrm->Text7);
  EXPECT_EQ(rig.trace(), Lines{"write EdgeOffset=x 450"});
}

TEST(Check6, IsStoredWhenItIsClicked) {
  WatchingRig rig;
  rig.tick_off(conffrm->Check6, 1);
  rig.tick_off(conffrm->Check6, 0);
  EXPECT_EQ(rig.trace(), (Lines{"write KeepPosition= 1", "write KeepPosition= 0"}));
}

TEST(Check5, StoresNothing) {
  WatchingRig rig;
  rig.tick_off(conffrm->Check5, 0);
  EXPECT_TRUE(rig.trace().empty());
}

TEST(Combo1, StoresThePositionOfTheChosenEntry) {
  WatchingRig rig;
  rig.choose(conffrm->Combo1, "Update on refresh!");
  rig.choose(conffrm->Combo1, "Keep highest Magnitude");
  EXPECT_EQ(rig.trace(), (Lines{"write StrongerDisplay=1", "write StrongerDisplay=0"}));
}

}  // namespace
}  // namespace borvane
