#include "core/start.h"

#include <gtest/gtest.h>

#include "feed/area.h"
#include "info/banner.h"
#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/program/pages.h"
#include "support/rig.h"

namespace borvane {
namespace {

constexpr int button_quit = 5;

TEST(Main, LoadsTheSettingsThenShowsTheRecordsWindowThenTheBanner) {
  Rig rig;
  rig.start();
  EXPECT_EQ(rig.trace({"load", "show"}),
            (Lines{"load conffrm", "load frmRecords", "show frmRecords", "load banner", "show banner"}));
}

TEST(Main, ShowsNoBannerOnceItHasBeenShownOften) {
  Rig rig;
  rig.store()["ad"] = "5";
  rig.start();
  EXPECT_EQ(rig.trace({"load", "show"}), (Lines{"load conffrm", "load frmRecords", "show frmRecords"}));
}

TEST(Main, FetchesNothingAndReturns) {
  Rig rig;
  rig.start();
  EXPECT_TRUE(rig.trace({"request", "pump", "wait"}).empty());
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(Main, StartsWithTheRefreshOffAndTheSettingsHidden) {
  Rig rig;
  rig.start();
  EXPECT_TRUE(frmRecords->IsShown());
  EXPECT_FALSE(conffrm->IsShown());
  EXPECT_FALSE(frmRecords->Timer1.Enabled());
  EXPECT_FALSE(frmRecords->Toolbar1.Buttons(3).Enabled());
  EXPECT_FALSE(frmRecords->Toolbar1.Buttons(4).Enabled());
  EXPECT_EQ(Module1->BarMode, 0);
}

TEST(Main, LeavesTheWatermarkAndTheUsersOnlineTimersRunning) {
  Rig rig;
  rig.start();
  EXPECT_TRUE(frmRecords->Timer2.IsCounting());
  EXPECT_EQ(frmRecords->Timer2.Interval(), 10000);
  EXPECT_TRUE(frmRecords->Timer3.IsCounting());
  EXPECT_EQ(frmRecords->Timer3.Interval(), 60000);
  EXPECT_FALSE(conffrm->Timer1.IsCounting());
}

TEST(Main, EndsTheProgramWithAReportWhenStartingFails) {
  Rig rig;
  rig.store()["RunTime"] = "32767";
  rig.start();
  ASSERT_GE(rig.trace().size(), 2u);
  EXPECT_TRUE(rig.trace()[rig.trace().size() - 2].starts_with("error report 6 "));
  EXPECT_EQ(rig.trace().back(), "end 1");
  EXPECT_TRUE(rig.trace({"show"}).empty());
}

TEST(Module1, StartsWithEveryFlagFalseAndEveryNumberZero) {
  const Rig rig;
  EXPECT_EQ(Module1->AlertThreshold, 0);
  EXPECT_EQ(Module1->LastAlertTime, "");
  EXPECT_EQ(Module1->RefreshBusy, flag_false);
  EXPECT_EQ(Module1->GlobalScanFlag, flag_false);
  EXPECT_EQ(Module1->RefreshCount, 0);
  EXPECT_EQ(Module1->SiteRoot, "");
  EXPECT_EQ(Module1->OpenLinkTarget, "");
  EXPECT_EQ(Module1->AreaIndex, 0);
  EXPECT_EQ(Module1->BarMode, 0);
  EXPECT_EQ(Module1->RunCount, 0);
  EXPECT_EQ(Module1->LogFolder, "");
  EXPECT_EQ(Module1->MacID, "");
  EXPECT_EQ(Module1->ShowBanner, flag_false);
  EXPECT_EQ(flag_true, -1);
}

TEST(Module1, KeepsTheColorCodesAtZeroWhenColorsAreStored) {
  Rig rig;
  rig.store()["Color0"] = " 3";
  rig.store()["Color2"] = " 7";
  rig.start();
  for (const Integer code : Module1->ColorCodes)
    EXPECT_EQ(code, 0);
}

TEST(QuitProgram, EmptiesTheListsThenUnloadsTheWindowsThenEndsTheProcess) {
  Rig rig;
  rig.start();
  rig.watch_rows(frmRecords->ListView1, "ListView1");
  rig.watch_rows(frmRecords->ListView2, "ListView2");
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, button_quit);
  EXPECT_EQ(rig.trace(), (Lines{"rows ListView1 cleared", "rows ListView2 cleared", "unload conffrm", "hide frmRecords",
                                "hide banner", "unload banner", "end 0"}));
  EXPECT_EQ(rig.end_status(), 0);
}

TEST(QuitProgram, IsNotStoppedByTheRecordsWindowThatRefuses) {
  Rig rig;
  rig.store()["ad"] = "5";
  rig.start();
  rig.press(frmRecords->Toolbar1, button_quit);
  EXPECT_NE(frmRecords.IfLoaded(), nullptr);
  EXPECT_EQ(conffrm.IfLoaded(), nullptr);
  EXPECT_EQ(rig.end_status(), 0);
}

TEST(QuitProgram, StoresNothing) {
  Rig rig;
  rig.start();
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, button_quit);
  EXPECT_EQ(rig.end_status(), 0);
  EXPECT_TRUE(rig.trace({"write"}).empty());
}

TEST(QuitProgram, DoesNotWaitForAFetch) {
  Rig rig;
  rig.start();
  rig.choose(conffrm->Combo2, "Los Angeles");
  rig.hold(los_angeles);
  rig.during_request(los_angeles, [&] {
    rig.clear_trace();
    rig.press(frmRecords->Toolbar1, button_quit);
  });
  rig.key('R');
  EXPECT_EQ(rig.trace().back(), "end 0");
  EXPECT_TRUE(rig.trace({"wait", "pump", "cancel", "time-out"}).empty()) << "the fetch does not continue";
}

}  // namespace
}  // namespace borvane
