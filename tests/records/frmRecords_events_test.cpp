#include <gtest/gtest.h>

#include "info/Aboutfrm.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

// Keys.

/// What the first panel shows, change by change, while a key is released.
Lines FirstPanelDuring(int code, int shift = 0) {
  WatchingRig rig;
  frmRecords->StatusBar1.Panels(1).Text = "Depth: 26.5 km";
  rig.watch(frmRecords->StatusBar1.Panels(1), frmRecords->StatusBar1.Panels(1).Text, "Panels(1)");
  rig.key(code, shift);
  return rig.trace({"set", "request", "message"});
}

TEST(KeyUp, RefreshesAtR) {
  EXPECT_EQ(FirstPanelDuring(82),
            (Lines{"set Panels(1)=Refreshing", "request " + set_online, "request " + los_angeles, "set Panels(1)="}));
}

TEST(KeyUp, AsksForTheUsersOnlineAtF) {
  EXPECT_EQ(FirstPanelDuring(70), (Lines{"set Panels(1)=GET USRS", "request " + who_is_on, "set Panels(1)="}));
}

TEST(KeyUp, DoesNotLookAtTheShiftState) {
  for (const int shift : {1, 2, 4, 7})
    EXPECT_EQ(FirstPanelDuring(82, shift).at(0), "set Panels(1)=Refreshing");
}

TEST(KeyUp, EmptiesTheFirstPanelForEveryKey) {
  RecordProperty("quirk", "any-key-wipes-first-panel");
  for (const int code : {0, 13, 65, 85, 112, 114, 121, 255})
    EXPECT_EQ(FirstPanelDuring(code), Lines{"set Panels(1)="}) << code;
}

TEST(KeyUp, TurnsTheHeartbeatOnAndOffAtF10) {
  Rig rig;
  rig.start();
  rig.key(121);
  EXPECT_TRUE(frmRecords->Label10.Visible());
  rig.key(121);
  EXPECT_FALSE(frmRecords->Label10.Visible());
}

TEST(KeyUp, TurnsTheUsersOnlineOnAndOffAtU) {
  Rig rig;
  rig.start();
  rig.key('U');
  EXPECT_TRUE(frmRecords->Label9.Visible());
  rig.key('U');
  EXPECT_FALSE(frmRecords->Label9.Visible());
}

TEST(KeyUp, RunsTheClickOfHelpAtF1) {
  Rig rig;
  rig.start();
  int clicks = 0;
  frmRecords->Label7.Click = [&] { ++clicks; };
  rig.key(112);
  EXPECT_EQ(clicks, 1);
}

const std::string quit_question =
    "message [Borvane - Quit] Are you sure you want to terminate Borvane ? (Yes, No) with a question mark";

TEST(KeyUp, AsksAtEscAndQuitsOnYes) {
  Rig rig;
  rig.start();
  rig.message_box().Answer(MessageAnswer::Yes);
  rig.key(27);
  EXPECT_EQ(rig.trace({"message", "end"}), (Lines{quit_question, "end 0"}));
}

TEST(KeyUp, AsksAtEscAndContinuesOnNo) {
  Rig rig;
  rig.start();
  frmRecords->StatusBar1.Panels(1).Text = "Depth: 26.5 km";
  rig.message_box().Answer(MessageAnswer::No);
  rig.key(27);
  EXPECT_EQ(rig.trace({"message", "end"}), Lines{quit_question});
  EXPECT_EQ(frmRecords->StatusBar1.Panels(1).Text(), "");
}

TEST(KeyUp, RunsTimersWhileTheQuestionIsOpen) {
  WatchingRig rig;
  rig.key('R');
  rig.message_box().DuringNext([&] { rig.tick(frmRecords->Timer1, 3); });
  rig.key(27);
  EXPECT_EQ(Module1->RefreshCount, 3);
}

// The pointer and the watermark.

TEST(MouseMove, UnderlinesTheHeadlineWhileThePointerIsOnIt) {
  Rig rig;
  rig.start();
  rig.happen([] { frmRecords->Label3.MouseMove.Raise({.button = 0, .shift = 0}); });
  EXPECT_TRUE(frmRecords->Label3.Underline());
  rig.move_mouse(10, 10);
  EXPECT_FALSE(frmRecords->Label3.Underline());
}

/// Whether the pointer at this place brings the watermark back.
bool BringsTheWatermark(float x, float y) {
  Rig rig;
  rig.start();
  rig.tick(frmRecords->Timer2);
  rig.move_mouse(x, y);
  EXPECT_EQ(frmRecords->Image1.Visible(), frmRecords->Timer2.Enabled());
  return frmRecords->Image1.Visible();
}

TEST(MouseMove, BringsTheWatermarkBackOnlyInsideItsPlace) {
  EXPECT_TRUE(BringsTheWatermark(8000, 1500));
  EXPECT_TRUE(BringsTheWatermark(6721, 1500));
  EXPECT_FALSE(BringsTheWatermark(6720, 1500));
  EXPECT_TRUE(BringsTheWatermark(10664, 1500));
  EXPECT_FALSE(BringsTheWatermark(10665, 1500));
  EXPECT_TRUE(BringsTheWatermark(8000, 1351));
  EXPECT_FALSE(BringsTheWatermark(8000, 1350));
  EXPECT_TRUE(BringsTheWatermark(8000, 1889));
  EXPECT_FALSE(BringsTheWatermark(8000, 1890));
}

TEST(MouseMove, KeepsTheWatermarksPlaceWhenTheWindowGrows) {
  RecordProperty("quirk", "watermark-place-is-fixed");
  Rig rig;
  rig.start();
  rig.happen([] { frmRecords->SetSize(20000, 10000); });
  rig.tick(frmRecords->Timer2);
  rig.move_mouse(frmRecords->Image1.Left() + 100, 1500);
  EXPECT_FALSE(frmRecords->Image1.Visible());
  rig.move_mouse(8000, 1500);
  EXPECT_TRUE(frmRecords->Image1.Visible());
}

TEST(Timer2, HidesTheWatermarkOnce) {
  Rig rig;
  rig.start();
  EXPECT_TRUE(frmRecords->Image1.Visible());
  rig.tick(frmRecords->Timer2);
  EXPECT_FALSE(frmRecords->Image1.Visible());
  EXPECT_FALSE(frmRecords->Timer2.Enabled());
}

// The link labels.

TEST(Label5, OpensTheLogForTheWindow) {
  Rig rig;
  rig.start();
  rig.clear_trace();
  rig.click(frmRecords->Label5);
  EXPECT_EQ(rig.trace(), Lines{"open-file /documents/Borvane/quakes.log for frmRecords"});
}

TEST(Label6, ShowsTheAboutWindowWithoutAnOwner) {
  Rig rig;
  rig.start();
  rig.clear_trace();
  rig.click(frmRecords->Label6);
  EXPECT_EQ(rig.trace({"show"}), Lines{"show Aboutfrm"});
  EXPECT_TRUE(Aboutfrm->IsShown());
}

TEST(Label8, IsDisabledByItsClick) {
  Rig rig;
  rig.start();
  frmRecords->Label8.Enabled = true;
  rig.click(frmRecords->Label8);
  EXPECT_FALSE(frmRecords->Label8.Enabled());
}

}  // namespace
}  // namespace borvane
