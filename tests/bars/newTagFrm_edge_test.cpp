#include <gtest/gtest.h>

#include "bars/bar_content.h"
#include "bars/newTagFrm.h"
#include "support/program/bar_rig.h"

namespace borvane {
namespace {

constexpr float hot = BarRig::screen_width - 1600;

/// An open long bar with one of the three choices on.
struct EdgeRig : BarRig {
  static constexpr int move = 0;
  static constexpr int hide = 1;
  static constexpr int ignore = 2;

  explicit EdgeRig(int choice) : bar(open_long_bar()) {
    conffrm->Option1(choice).Value = true;
    store()["LastBig"] = "9";
    clear_trace();
  }

  void touch(float x = hot) { move_mouse_over(bar.Picture1, x, 100); }

  /// What of the bar follows from the pointer and the timer.
  std::string state() const {
    return std::to_string(bar.EdgeTicks) + (bar.Timer1.Enabled() ? " on" : " off") +
           (bar.IsShown() ? " shown" : " hidden") + " at " + SingleText(bar.Left());
  }

  LongBarForm &bar;
};

TEST(LongBarEdge, BeginsSixteenHundredTwipsBeforeTheBarsEnd) {
  EdgeRig rig(EdgeRig::move);
  rig.touch(hot - 1);
  EXPECT_EQ(rig.state(), "0 off shown at 0");
  rig.touch(hot);
  EXPECT_EQ(rig.state(), "1 on shown at -900");
}

TEST(LongBarEdge, FollowsTheBarsWidth) {
  EdgeRig rig(EdgeRig::move);
  rig.bar.Width = 10000;
  rig.touch(8399);
  EXPECT_EQ(rig.state(), "0 off shown at 0");
  rig.touch(8400);
  EXPECT_EQ(rig.state(), "1 on shown at -900");
}

TEST(LongBarEdge, MovesTheBarAndBringsItBackOnTheFourthTick) {
  EdgeRig rig(EdgeRig::move);
  rig.touch();
  for (const char *state : {"2 on shown at -900", "3 on shown at -900", "4 on shown at -900", "0 off shown at 0"}) {
    rig.tick(rig.bar.Timer1);
    EXPECT_EQ(rig.state(), state);
  }
  EXPECT_EQ(rig.trace({"show", "hide"}), Lines{"show newTagFrm without the focus"});
}

TEST(LongBarEdge, BringsTheBarBackIntoItsPlaceBeforeItShows) {
  RecordProperty("quirk", "long-bar-comes-back-at-the-left");
  EdgeRig rig(EdgeRig::hide);
  rig.bar.Left = 300;
  rig.touch();
  rig.watch(rig.bar, rig.bar.Left, "Left");
  rig.watch(rig.bar.Timer1, rig.bar.Timer1.Enabled, "Timer1");
  rig.clear_trace();
  rig.tick(rig.bar.Timer1, 4);
  EXPECT_EQ(rig.trace(), (Lines{"set Left=0", "show newTagFrm without the focus", "set Timer1=false"}));
}

TEST(LongBarEdge, IsLeftByExpandWhileTheBarIsAway) {
  for (const int choice : {EdgeRig::move, EdgeRig::hide}) {
    EdgeRig rig(choice);
    rig.touch();
    rig.tick(rig.bar.Timer1, 2);
    rig.click(rig.bar.mnuRecrs);
    EXPECT_EQ(newTagFrm.IfLoaded(), nullptr);
    EXPECT_TRUE(frmRecords->IsShown());

    const LongBarForm &fresh = rig.open_long_bar();
    EXPECT_EQ(fresh.EdgeTicks, 0);
    EXPECT_EQ(fresh.Left(), 0);
    EXPECT_FALSE(fresh.Timer1.Enabled());
    EXPECT_TRUE(fresh.IsShown());
  }
}

TEST(LongBarEdge, HidesTheBarAndBringsItBackOnTheFourthTickWithoutTheKeyboard) {
  EdgeRig rig(EdgeRig::hide);
  rig.bar.Left = 300;
  rig.touch();
  EXPECT_EQ(rig.trace(), Lines{"hide newTagFrm"});
  EXPECT_EQ(rig.state(), "1 on hidden at 300");
  rig.tick(rig.bar.Timer1, 3);
  EXPECT_EQ(rig.state(), "4 on hidden at 300");
  rig.tick(rig.bar.Timer1);
  EXPECT_EQ(rig.state(), "0 off shown at 0");
  EXPECT_EQ(rig.trace(), (Lines{"hide newTagFrm", "show newTagFrm without the focus"}));
}

TEST(LongBarEdge, IgnoresThePointerButForTheTimer) {
  RecordProperty("quirk", "ignore-keeps-the-timer-running");
  EdgeRig rig(EdgeRig::ignore);
  rig.touch();
  rig.tick(rig.bar.Timer1, 50);
  EXPECT_EQ(rig.state(), "0 on shown at 0");
  EXPECT_TRUE(rig.trace().empty());
}

TEST(LongBarEdge, GoesFromIgnoreToAnotherChoiceAtTheNextTouch) {
  for (const int choice : {EdgeRig::move, EdgeRig::hide}) {
    EdgeRig rig(EdgeRig::ignore);
    rig.touch();
    conffrm->Option1(choice).Value = true;
    rig.tick(rig.bar.Timer1, 10);
    EXPECT_EQ(rig.state(), "0 on shown at 0");
    rig.touch();
    EXPECT_EQ(rig.bar.EdgeTicks, 1);
    rig.tick(rig.bar.Timer1, 4);
    EXPECT_EQ(rig.state(), "0 off shown at 0");
  }
}

TEST(LongBarEdge, LeavesIgnoreByExpandToo) {
  EdgeRig rig(EdgeRig::ignore);
  rig.touch();
  rig.click(rig.bar.mnuRecrs);
  EXPECT_EQ(newTagFrm.IfLoaded(), nullptr);
}

TEST(LongBarEdge, DoesNothingButStartTheTimerWithNoChoice) {
  EdgeRig rig(EdgeRig::ignore);
  conffrm->Option1(EdgeRig::ignore).Value = false;
  rig.touch();
  EXPECT_EQ(rig.state(), "0 on shown at 0");
}

TEST(LongBarEdge, MovesToTheSamePlaceAgainAndLengthensThePause) {
  EdgeRig rig(EdgeRig::move);
  rig.touch();
  rig.tick(rig.bar.Timer1, 3);
  rig.touch();
  EXPECT_EQ(rig.state(), "1 on shown at -900");
  rig.tick(rig.bar.Timer1, 3);
  EXPECT_EQ(rig.state(), "4 on shown at -900");
  rig.tick(rig.bar.Timer1);
  EXPECT_EQ(rig.state(), "0 off shown at 0");
  rig.touch();
  EXPECT_EQ(rig.state(), "1 on shown at -900") << "it comes back under the pointer and goes again";
}

TEST(LongBarEdge, ReadsTheOffsetAtEachEvent) {
  for (const auto &[text, left] : std::initializer_list<std::pair<const char *, float>>{
           {"1200.5", -1200.5F}, {"abc", 0}, {"", 0}, {"-300", 300}, {"1e9", -1e9F}, {" 45 twips", -45}}) {
    EdgeRig rig(EdgeRig::move);
    rig.bar.Left = 7;
    conffrm->Text7.Text = text;
    rig.touch();
    EXPECT_EQ(rig.bar.Left(), left) << text;
    rig.tick(rig.bar.Timer1, 4);
    EXPECT_EQ(rig.state(), "0 off shown at 0") << text;
  }
}

TEST(LongBarEdge, EndsTheProgramForAnOffsetThatNoPlaceCanTake) {
  for (const char *text : {"1e300", "1e39", "1e11", "-1e11"}) {
    EdgeRig rig(EdgeRig::move);
    conffrm->Text7.Text = text;
    rig.touch();
    EXPECT_EQ(rig.trace({"error"}), Lines{"error report 6 Overflow"}) << text;
    EXPECT_EQ(rig.end_status(), 1);
  }
}

TEST(LongBarEdge, ReadsNoOffsetUnlessTheBarMoves) {
  for (const int choice : {EdgeRig::hide, EdgeRig::ignore}) {
    EdgeRig rig(choice);
    conffrm->Text7.Text = "1e300";
    rig.touch();
    EXPECT_EQ(rig.end_status(), std::nullopt);
  }
}

TEST(LongBarEdge, NeverBringsTheBarBackWithoutAPeriod) {
  RecordProperty("quirk", "bars-tick-by-the-refresh-box");
  for (const char *text : {"0", "-5", "abc"}) {
    BarRig rig;
    conffrm->Text2.Text = text;
    LongBarForm &bar = rig.open_long_bar();
    rig.move_mouse_over(bar.Picture1, hot, 0);
    EXPECT_TRUE(bar.Timer1.Enabled());
    EXPECT_FALSE(bar.Timer1.IsCounting());
    rig.tick(bar.Timer1, 10);
    EXPECT_EQ(bar.Left(), -900) << text;
  }
}

TEST(LongBarTimer, IsStartedByTheEdgeAlone) {
  RecordProperty("quirk", "long-bar-does-not-follow-the-refresh");
  EdgeRig rig(EdgeRig::ignore);
  rig.refresh();
  rig.key(rig.bar, key_left);
  rig.happen(UpdateLongBar);
  rig.bar.Label1(0).Caption = "old";
  rig.refresh();
  EXPECT_FALSE(rig.bar.Timer1.Enabled());
  EXPECT_EQ(rig.bar.Label1(0).Caption(), "old");
}

TEST(LongBarTimer, UpdatesTheBarAtEachSixHundredthTick) {
  EdgeRig rig(EdgeRig::ignore);
  rig.touch();
  rig.bar.Label1(0).Caption = "old";
  rig.tick(rig.bar.Timer1, 599);
  EXPECT_EQ(rig.bar.Label1(0).Caption(), "old");
  rig.tick(rig.bar.Timer1);
  EXPECT_EQ(rig.bar.Label1(0).Caption(), "Last: 2.0");
  EXPECT_EQ(rig.bar.IdleTicks, 0);
  rig.clear_trace();
  rig.tick(rig.bar.Timer1, 599);
  EXPECT_TRUE(rig.trace({"read"}).empty());
  rig.tick(rig.bar.Timer1);
  EXPECT_EQ(rig.trace({"read"}).size(), 4U);
}

TEST(LongBarTimer, AddsUpTheTicksOfAllItsRuns) {
  EdgeRig rig(EdgeRig::move);
  rig.bar.IdleTicks = 596;
  rig.bar.Label1(0).Caption = "old";
  rig.touch();
  rig.tick(rig.bar.Timer1, 4);
  EXPECT_EQ(rig.bar.Label1(0).Caption(), "Last: 2.0") << "the tick that brings the bar back counts, too";
  EXPECT_EQ(rig.bar.IdleTicks, 0);
}

TEST(LongBarTimer, ReadsAHalfBuiltListWhileAScanLetsEventsRun) {
  EdgeRig rig(EdgeRig::ignore);
  rig.store()["LastBig"] = "1";
  rig.touch();
  rig.bar.IdleTicks = 599;
  conffrm->Text1.Text = "3";
  rig.serve(los_angeles, Page(Row("6.5") + Row("7.1")));
  rig.random().Add(1.5 / 600);  // one step of the alert's shaking
  rig.screen().on_load = [&](FormBase & /*popup*/) {
    constexpr int first_step = 2;
    rig.during_pump(first_step, [&] {
      const int rows = frmRecords->ListView1.ListItems.Count();
      rig.tick(rig.bar.Timer1);
      rig.note("ticked with " + IntegerText(rows) + ": " + rig.bar.Label1(0).Caption() + ", " +
               rig.bar.Label2(0).Caption());
    });
  };
  rig.refresh();
  EXPECT_EQ(rig.trace({"ticked"}), Lines{"ticked with 1: Last: 6.5, Strong: 6.5"});
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 2);
  rig.tick(rig.bar.Timer1, 600);
  EXPECT_EQ(rig.bar.Label2(0).Caption(), "Strong: 7.1") << "the next update mends the view";
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(LongBarTimer, FindsAListThatHasBeenEmptied) {
  EdgeRig rig(EdgeRig::ignore);
  rig.touch();
  rig.bar.Label1(0).Caption = "old";
  BarRig::list({});
  rig.tick(rig.bar.Timer1, 600);
  EXPECT_EQ(rig.bar.Label1(0).Caption(), "old");
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(LongBarKeyH, HidesTheBarForGoodWithoutTheTimer) {
  RecordProperty("quirk", "h-may-hide-for-good");
  EdgeRig rig(EdgeRig::move);
  rig.key(rig.bar, 'H');
  EXPECT_EQ(rig.state(), "1 off hidden at 0");
  rig.tick(rig.bar.Timer1, 20);
  EXPECT_EQ(rig.state(), "1 off hidden at 0");
}

TEST(LongBarKeyH, HidesTheBarForFourTicksOfARunningTimer) {
  EdgeRig rig(EdgeRig::ignore);
  rig.touch();
  rig.key(rig.bar, 'H');
  EXPECT_EQ(rig.state(), "1 on hidden at 0");
  rig.tick(rig.bar.Timer1, 3);
  EXPECT_EQ(rig.state(), "4 on hidden at 0");
  rig.tick(rig.bar.Timer1);
  EXPECT_EQ(rig.state(), "0 off shown at 0");
}

}  // namespace
}  // namespace borvane
