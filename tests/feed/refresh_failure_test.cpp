#include <gtest/gtest.h>

#include "bars/Form1.h"
#include "core/program.h"
#include "feed/refresh.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

/// A program after one refresh, whose results a failed one must not change.
struct RefreshedRig : WatchingRig {
  RefreshedRig() {
    serve(los_angeles, Page(Row("2.0") + Row("1.6")));
    refresh();
    clock().Advance(600);
    clear_trace();
  }

  /// Expects what a failure sets, and what it leaves unchanged.
  void expect_failed(int rows = 2) {
    EXPECT_EQ(end_status(), std::nullopt);
    EXPECT_EQ(LastRefresh(), "Last Refresh: 01:30:15");
    EXPECT_EQ(frmRecords->Caption(), "2.0 - Borvane - Last Events");
    EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), rows);
    EXPECT_EQ(Module1->RefreshCount, 700);
    EXPECT_EQ(Module1->RefreshBusy, flag_false);
    EXPECT_EQ(frmRecords->MousePointer(), pointer_normal);
    EXPECT_TRUE(frmRecords->Timer1.Enabled());
    EXPECT_TRUE(trace({"message", "error"}).empty());
  }
};

TEST(FailRefresh, FollowsAnUnreachableHost) {
  RefreshedRig rig;
  rig.refuse(los_angeles);
  rig.refresh();
  rig.expect_failed();
}

TEST(FailRefresh, FollowsATimeOut) {
  RefreshedRig rig;
  rig.hold(los_angeles);
  rig.refresh();
  rig.expect_failed();
  EXPECT_EQ(rig.trace({"time-out"}), Lines{"time-out " + los_angeles});
}

TEST(FailRefresh, FollowsAnEmptyAnswer) {
  RefreshedRig rig;
  rig.serve(los_angeles, "");
  rig.refresh();
  rig.expect_failed();
  EXPECT_EQ(Module1->SiteRoot, los_angeles) << "an empty page fails before the address is cut";
}

TEST(FailRefresh, FollowsAFailureOfTheScannerAndKeepsTheRowsSoFar) {
  RefreshedRig rig;
  rig.serve(los_angeles, Page(Row("4.0")) + "no number at all /recenteqs/Quakes/");
  rig.refresh();
  EXPECT_EQ(Newest(), "4.0");
  EXPECT_EQ(frmRecords->ListView1.ListItems(1).Text, "4.0");
  rig.expect_failed(1);
}

TEST(FailRefresh, FollowsTheFirstFailureAndLeavesAnotherTryToTheClock) {
  for (const auto &fail : std::initializer_list<void (*)(Rig &)>{[](Rig &rig) { rig.refuse(los_angeles); },
                                                                 [](Rig &rig) { rig.hold(los_angeles); },
                                                                 [](Rig &rig) { rig.serve(los_angeles, ""); }}) {
    RefreshedRig rig;
    fail(rig);
    rig.refresh();
    EXPECT_EQ(rig.trace({"request"}), (Lines{"request " + set_online, "request " + los_angeles}));
    rig.expect_failed();
  }
}

TEST(FailRefresh, DoesNotFollowAForeignException) {
  RefreshedRig rig;
  rig.http().Break(los_angeles);
  rig.key('R');
  EXPECT_EQ(rig.trace({"error", "end"}), (Lines{"error report 0 broken", "end 1"}));
}

TEST(FailRefresh, FollowsACoordinateOutOfRange) {
  RefreshedRig rig;
  conffrm->Text6(0).Text = "40000";
  rig.refresh();
  rig.expect_failed();
  EXPECT_EQ(rig.fetches(), 0);
}

TEST(FailRefresh, FollowsAnAlertMagnitudeBeyondSinglePrecision) {
  RefreshedRig rig;
  conffrm->Text1.Text = "1e39";
  rig.refresh();
  rig.expect_failed();
}

TEST(FailRefresh, FollowsAFailureOfTheOneCallToTheService) {
  RefreshedRig rig;
  Module1->RunCount = 10;
  rig.refresh();
  rig.expect_failed();
  EXPECT_EQ(rig.fetches(), 0);
  EXPECT_EQ(Module1->RunCount, 10);

  rig.clear_trace();
  rig.serve(add_run, "");
  rig.refresh();
  EXPECT_EQ(rig.trace({"request"}).at(1), "request " + add_run) << "the next refresh tries it again";
  EXPECT_EQ(Module1->RunCount, -1);
}

TEST(FailRefresh, FollowsAFailureInTheLastStepsToo) {
  RefreshedRig rig;
  frmRecords->ListView2.ListItems.Clear();
  rig.refresh();
  EXPECT_EQ(Module1->RefreshCount, 700);
  EXPECT_EQ(Module1->RefreshBusy, flag_false);
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(FailRefresh, FollowsAnAreaThatIsNoEntryAtTheStartOfTheRun) {
  Rig rig;
  rig.store()["Area"] = "Atlantis";
  rig.start();
  rig.key('R');
  EXPECT_EQ(rig.trace({"request"}).back(), "request ") << "no address has been made yet";
  EXPECT_EQ(Module1->RefreshCount, 700);
  EXPECT_EQ(LastRefresh(), "");
}

TEST(FailRefresh, FollowsAnAreaThatIsNoEntryWithTheSiteRootOnceAPageHasBeenFetched) {
  RefreshedRig rig;
  conffrm->Combo2.Text = "Atlantis";
  rig.refresh();
  EXPECT_EQ(rig.trace({"request"}).back(), "request " + southern + "/");
  rig.expect_failed();
}

TEST(FailRefresh, StartsTheTimerAndResetsThePointerOnlyInModeThree) {
  for (const int mode : {0, 1, 2, 3, 4}) {
    WatchingRig rig;
    // The short bar, which mode 1 refers to, switches the refresh on when it loads.
    static_cast<void>(*Form1);
    frmRecords->Timer1.Enabled = false;
    constexpr int pointer_before = 2;
    frmRecords->MousePointer = pointer_before;
    rig.refuse(los_angeles);
    rig.refresh(mode);
    EXPECT_EQ(frmRecords->Timer1.Enabled(), mode == 3) << mode;
    EXPECT_EQ(frmRecords->MousePointer(), mode == 3 ? pointer_normal : pointer_before) << mode;
    EXPECT_EQ(Module1->RefreshBusy, flag_false) << mode;
    EXPECT_EQ(Module1->RefreshCount, 700) << mode;
  }
}

TEST(FailRefresh, SetsTheCountToTheRoundedThreshold) {
  for (const auto &[threshold, count] : std::initializer_list<std::pair<const char *, int>>{
           {"65", 65}, {"2.5", 2}, {"3.5", 4}, {"abc", 0}, {"", 0}, {"-20", -20}, {"32767", 32767}}) {
    WatchingRig rig;
    rig.refuse(los_angeles);
    conffrm->Text2.Text = threshold;
    rig.refresh();
    EXPECT_EQ(Module1->RefreshCount, count) << threshold;
  }
}

TEST(FailRefresh, EndsTheProgramForEveryCallerWhenTheThresholdDoesNotFitSixteenBits) {
  RecordProperty("quirk", "unreachable-threshold-ends-the-program");
  for (const char *threshold : {"32768", "40000", "-32769", "1e300", "1e999"}) {
    {
      WatchingRig rig;
      rig.refuse(los_angeles);
      conffrm->Text2.Text = threshold;
      rig.key('R');
      EXPECT_EQ(rig.end_status(), 1) << threshold;
      EXPECT_TRUE(rig.trace({"error"}).at(0).starts_with("error report 6 ")) << threshold;
    }
    WatchingRig rig;
    rig.refuse(los_angeles);
    conffrm->Text2.Text = threshold;
    rig.press(frmRecords->Toolbar1, 1);
    EXPECT_EQ(rig.end_status(), 1) << threshold;
  }
}

TEST(FailRefresh, KeepsTheProgramRunningWhicheverRequestFails) {
  for (int failing = 1; failing <= 7; ++failing) {
    WatchingRig rig;
    Module1->RunCount = 10;
    for (const std::string &address : {set_online, add_run, who_is_on, version_file})
      rig.serve(address, "1");
    rig.http().FailRequest(failing);
    rig.press(frmRecords->Toolbar1, 1);
    EXPECT_EQ(rig.end_status(), std::nullopt) << failing;
    EXPECT_TRUE(frmRecords->Timer1.Enabled()) << failing;
    const bool headline_fails = failing == 5;
    EXPECT_EQ(frmRecords->MousePointer(), headline_fails ? pointer_hourglass : pointer_normal) << failing;
    EXPECT_EQ(Module1->RefreshBusy, flag_false) << failing;
    EXPECT_EQ(conffrm->Combo2.Text(), "Los Angeles") << failing;
    const bool refresh_fails = failing == 2 || failing == 3;
    EXPECT_EQ(Newest(), refresh_fails ? "Mag" : "2.0") << failing;
  }
}

}  // namespace
}  // namespace borvane
