#include <gtest/gtest.h>

#include "bars/Form1.h"
#include "bars/newTagFrm.h"
#include "scan/event_rows.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

constexpr int refresh = 1;
constexpr int settings = 2;

int ButtonValue(int button) { return frmRecords->Toolbar1.Buttons(button).Value(); }
std::string Panel3() { return frmRecords->StatusBar1.Panels(3).Text(); }

void WatchToolbar(Rig &rig) {
  rig.watch(*frmRecords, frmRecords->MousePointer, "MousePointer");
  rig.watch(frmRecords->Timer1, frmRecords->Timer1.Enabled, "Timer1");
  rig.watch(frmRecords->StatusBar1.Panels(3), frmRecords->StatusBar1.Panels(3).Text, "Panels(3)");
  for (int i = 0; i < 4; ++i)
    rig.watch(frmRecords->Label2(i), frmRecords->Label2(i).Caption, frmRecords->Label2(i).FullName());
  for (int i = 1; i <= 4; ++i) {
    ToolbarButton &button = frmRecords->Toolbar1.Buttons(i);
    rig.watch(button, button.Enabled, "Buttons(" + std::to_string(i) + ").Enabled");
    rig.watch(button, button.Value, "Buttons(" + std::to_string(i) + ").Value");
  }
  rig.watch(frmRecords->Label9, frmRecords->Label9.Caption, "Label9");
  rig.watch_rows(frmRecords->ListView1, "ListView1");
  rig.watch(conffrm->Timer1, conffrm->Timer1.Enabled, "conffrm.Timer1");
}

TEST(RefreshButton, RunsItsStepsInOrderWithAnAreaAndAnEmptyList) {
  WatchingRig rig;
  rig.clock().Set({.year = 2018, .month = 2, .day = 7, .hour = 13, .minute = 5, .second = 9});
  rig.serve(version_file, "1");
  rig.serve(who_is_on, "17");
  WatchToolbar(rig);
  rig.press(frmRecords->Toolbar1, refresh);
  EXPECT_EQ(rig.trace({"set", "rows", "request"}), (Lines{"set Buttons(1).Value=1",
                                                          "set MousePointer=11",
                                                          "rows ListView1 cleared",
                                                          "request " + set_online,
                                                          "request " + los_angeles,
                                                          "rows ListView1 cleared",
                                                          "rows ListView1 1 added",
                                                          "set MousePointer=0",
                                                          "set Timer1=true",
                                                          "set Label2(3)=13:05:09  Feb 07",
                                                          "request " + version_file,
                                                          "set MousePointer=11",
                                                          "request " + world_page,
                                                          "set MousePointer=0",
                                                          "set Panels(3)=Auto Refresh On",
                                                          "set Buttons(3).Enabled=true",
                                                          "set Buttons(4).Enabled=true",
                                                          "set Label2(0)=Los Angeles",
                                                          "set Label2(1)=N/A",
                                                          "set Label2(2)=N/A",
                                                          "request " + who_is_on,
                                                          "set Label9=Users Online: 17"}));
}

TEST(RefreshButton, LeadsToTheSettingsOnAFreshProfile) {
  Rig rig;
  rig.start();
  WatchToolbar(rig);
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, refresh);
  EXPECT_EQ(rig.trace(), (Lines{"set Buttons(1).Value=1", "set Buttons(1).Value=0", "set Buttons(2).Value=1",
                                "show conffrm", "set conffrm.Timer1=true"}));
  EXPECT_EQ(ButtonValue(refresh), 0);
  EXPECT_EQ(ButtonValue(settings), 1);
  EXPECT_TRUE(conffrm->IsShown());
}

TEST(RefreshButton, SetsTheFirstColumnsBeforeTheFetch) {
  WatchingRig rig;
  SetupColumns(2);
  int columns = 0;
  rig.during_request(los_angeles, [&] { columns = frmRecords->ListView1.ColumnHeaders.Count(); });
  rig.press(frmRecords->Toolbar1, refresh);
  EXPECT_EQ(columns, 13);
  EXPECT_EQ(frmRecords->ListView1.ColumnHeaders.Count(), 8) << "the scanner has replaced them";
}

TEST(RefreshButton, FetchesNoPageWithRowsInTheListAndACountOfZero) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  rig.press(frmRecords->Toolbar1, refresh);
  rig.clear_trace();
  frmRecords->Label2(3).Caption = "untouched";
  rig.press(frmRecords->Toolbar1, refresh);
  EXPECT_EQ(rig.trace({"request"}), (Lines{"request " + world_page, "request " + who_is_on}));
  EXPECT_EQ(frmRecords->Label2(3).Caption(), "untouched");
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
  EXPECT_EQ(Panel3(), "Auto Refresh On");
}

TEST(RefreshButton, FetchesThePageWithRowsInTheListAndACountAboveZero) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  rig.press(frmRecords->Toolbar1, refresh);
  Module1->RefreshCount = 1;
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, refresh);
  EXPECT_EQ(rig.fetches(), 1);
}

TEST(RefreshButton, FetchesNoPageWithRowsInTheListAndACountBelowZero) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  rig.press(frmRecords->Toolbar1, refresh);
  Module1->RefreshCount = -1;
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, refresh);
  EXPECT_EQ(rig.fetches(), 0);
}

TEST(RefreshButton, StopsTheTimerAndTheCountWhenReleased) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  Module1->RefreshCount = 33;
  WatchToolbar(rig);
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, refresh);
  EXPECT_EQ(rig.trace(), (Lines{"set Buttons(1).Value=0", "set Timer1=false"}));
  EXPECT_EQ(Module1->RefreshCount, 0);
  EXPECT_FALSE(conffrm->IsShown());
  EXPECT_TRUE(frmRecords->Toolbar1.Buttons(3).Enabled());
  EXPECT_TRUE(frmRecords->Toolbar1.Buttons(4).Enabled());
}

TEST(RefreshButton, LeavesThePanelAtOnWhenReleased) {
  RecordProperty("quirk", "panel-keeps-auto-refresh-on");
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  rig.press(frmRecords->Toolbar1, refresh);
  EXPECT_FALSE(frmRecords->Timer1.Enabled());
  EXPECT_EQ(Panel3(), "Auto Refresh On");
}

TEST(RefreshButton, ShowsTheCoordinatesInTheBoxes) {
  WatchingRig rig;
  conffrm->Text6(0).Text = "116";
  conffrm->Text6(1).Text = "33";
  rig.press(frmRecords->Toolbar1, refresh);
  EXPECT_EQ(frmRecords->Label2(0).Caption(), "Los Angeles");
  EXPECT_EQ(frmRecords->Label2(1).Caption(), "116");
  EXPECT_EQ(frmRecords->Label2(2).Caption(), "33");
}

TEST(RefreshButton, ShowsTheAreaAndTheCoordinatesThatTheUserChoosesDuringTheFetch) {
  for (const char *area : {"Monterey, CA", "Puerto Rico"}) {
    WatchingRig rig;
    rig.during_request(los_angeles, [&] {
      rig.choose(conffrm->Combo2, area);
      rig.type(conffrm->Text6(0), "121.5");
      rig.type(conffrm->Text6(1), "37");
    });
    rig.press(frmRecords->Toolbar1, refresh);
    EXPECT_EQ(frmRecords->Label2(0).Caption(), area);
    EXPECT_EQ(frmRecords->Label2(1).Caption(), "121.5");
    EXPECT_EQ(frmRecords->Label2(2).Caption(), "37");
    EXPECT_EQ(rig.fetches(), 1) << "the page of the new area comes with the next refresh";
  }
}

TEST(RefreshButton, ShowsNoCoordinatesThatTheUserDeletesDuringTheFetch) {
  WatchingRig rig;
  conffrm->Text6(0).Text = "116";
  conffrm->Text6(1).Text = "33";
  rig.during_request(los_angeles, [&] { rig.type(conffrm->Text6(0), ""); });
  rig.press(frmRecords->Toolbar1, refresh);
  EXPECT_EQ(frmRecords->Label2(1).Caption(), "N/A");
  EXPECT_EQ(frmRecords->Label2(2).Caption(), "33");
}

TEST(RefreshButton, ShowsTheNameOfTheEntryAmongThoseThatShareAPage) {
  for (const char *area : {"Salinas, CA", "Monterey, CA"}) {
    WatchingRig rig;
    conffrm->Combo2.Text = area;
    rig.press(frmRecords->Toolbar1, refresh);
    EXPECT_EQ(frmRecords->Label2(0).Caption(), area);
    EXPECT_EQ(rig.trace({"request"}).at(1), "request " + southern + "/recenteqs/Maps/121-37.html");
  }
}

TEST(RefreshButton, IsTheOnlyButtonThatReportsTheLastChange) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  frmRecords->Label2(3).Caption = "untouched";
  rig.key('R');
  Module1->RefreshCount = 700;
  rig.tick(frmRecords->Timer1);
  EXPECT_EQ(rig.fetches(), 3);
  EXPECT_EQ(frmRecords->Label2(3).Caption(), "untouched");
}

TEST(RefreshButton, EmptiesTheListAlsoWhereTheRefreshFails) {
  RecordProperty("quirk", "switching-on-empties-the-list");
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  ASSERT_GT(frmRecords->ListView1.ListItems.Count(), 0);
  rig.refuse(los_angeles);
  rig.key('R');
  ASSERT_GT(frmRecords->ListView1.ListItems.Count(), 0) << "a refresh by the key keeps them";
  rig.press(frmRecords->Toolbar1, refresh);
  Module1->RefreshCount = 1;
  rig.press(frmRecords->Toolbar1, refresh);
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 0);
}

TEST(RefreshButton, ContinuesAfterAFailedRefresh) {
  WatchingRig rig;
  rig.refuse(los_angeles);
  rig.press(frmRecords->Toolbar1, refresh);
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
  EXPECT_EQ(frmRecords->MousePointer(), pointer_normal);
  EXPECT_EQ(Panel3(), "Auto Refresh On");
  EXPECT_EQ(frmRecords->Label2(3).Caption(), "01:30:15  Feb 07");
  EXPECT_EQ(rig.trace({"request"}).back(), "request " + who_is_on);
}

TEST(RefreshButton, RefreshesTheHeadlineWhileWorldSnapshotIsTickedAndBeforeTheUsersOnline) {
  for (const int value : {0, 1, 2}) {
    WatchingRig rig;
    conffrm->Check5.Value = value;
    rig.press(frmRecords->Toolbar1, refresh);
    const Lines last = value == 1 ? Lines{"request " + world_page, "request " + who_is_on}
                                  : Lines{"request " + version_file, "request " + who_is_on};
    const Lines requests = rig.trace({"request"});
    EXPECT_EQ(Lines(requests.end() - 2, requests.end()), last) << value;
    EXPECT_EQ(frmRecords->Label3.Visible(), value == 1) << value;
  }
}

TEST(RefreshButton, RefreshesTheHeadlineAtEverySwitchingOnAndNotWhenReleased) {
  WatchingRig rig;
  for (int pair = 0; pair < 2; ++pair) {
    rig.clear_trace();
    rig.press(frmRecords->Toolbar1, refresh);
    Lines requests = rig.trace({"request"});
    EXPECT_EQ(std::count(requests.begin(), requests.end(), "request " + world_page), 1) << pair;
    rig.clear_trace();
    rig.press(frmRecords->Toolbar1, refresh);
    EXPECT_TRUE(rig.trace({"request"}).empty()) << pair;
  }
}

TEST(RefreshButton, EndsTheProgramForACoordinateOutOfRange) {
  WatchingRig rig;
  conffrm->Text6(0).Text = "40000";
  rig.press(frmRecords->Toolbar1, refresh);
  EXPECT_EQ(rig.end_status(), 1);
  EXPECT_TRUE(rig.trace({"request"}).empty());
}

TEST(RefreshButton, SaysOffWhenTheTimerWasStoppedMeanwhile) {
  WatchingRig rig;
  rig.key('R');
  struct Stopper : PropertyWatcher {
    void PropertyChanged(const PropertyBase &property) override {
      if (&property == &frmRecords->Timer1.Enabled && frmRecords->Timer1.Enabled())
        frmRecords->Timer1.Enabled = false;
    }
  } stopper;
  frmRecords->Timer1.Enabled = false;
  frmRecords->Timer1.Watch(&stopper);
  rig.press(frmRecords->Toolbar1, refresh);
  frmRecords->Timer1.Watch(nullptr);
  EXPECT_EQ(Panel3(), "Auto Refresh Off");
}

// The settings button.

TEST(SettingsButton, ShowsTheSettingsAboveTheRecordsWindow) {
  WatchingRig rig;
  WatchToolbar(rig);
  rig.press(frmRecords->Toolbar1, settings);
  EXPECT_EQ(rig.trace(), (Lines{"set Buttons(2).Value=1", "set conffrm.Timer1=true", "show conffrm above frmRecords"}));
}

TEST(SettingsButton, StopsTheTimerWhileTheRefreshButtonIsUp) {
  RecordProperty("quirk", "settings-stop-a-clock-without-its-switch");
  WatchingRig rig;
  rig.key('R');
  ASSERT_TRUE(frmRecords->Timer1.Enabled());
  rig.press(frmRecords->Toolbar1, settings);
  EXPECT_FALSE(frmRecords->Timer1.Enabled());
  rig.press(frmRecords->Toolbar1, settings);
  EXPECT_FALSE(frmRecords->Timer1.Enabled());
}

TEST(SettingsButton, StartsTheTimerAgainWhileTheRefreshButtonIsDown) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  WatchToolbar(rig);
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, settings);
  EXPECT_EQ(rig.trace({"set"}),
            (Lines{"set Buttons(2).Value=1", "set Timer1=false", "set conffrm.Timer1=true", "set Timer1=true"}));
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, settings);
  EXPECT_EQ(rig.trace(), (Lines{"set Buttons(2).Value=0", "set Timer1=false", "hide conffrm", "set Timer1=true"}));
}

TEST(SettingsButton, StoresNeitherTheLogChoiceNorTheEdgeChoice) {
  RecordProperty("quirk", "toolbar-stores-no-choices");
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, settings);
  rig.happen([] {
    conffrm->Option2(1).Value = true;
    conffrm->Option1(2).Value = true;
  });
  rig.press(frmRecords->Toolbar1, settings);
  EXPECT_FALSE(conffrm->IsShown());
  EXPECT_FALSE(rig.store().Has("LogAll"));
  EXPECT_FALSE(rig.store().Has("EdgeDetect"));
  EXPECT_TRUE(conffrm->Option1(2).Value()) << "it holds until the program ends";
}

TEST(SettingsButton, RefreshesAtOnceAfterAChangeOfArea) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  rig.press(frmRecords->Toolbar1, settings);
  rig.choose(conffrm->Combo2, "Seattle Area");
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, settings);
  EXPECT_EQ(rig.trace({"hide", "request"}).at(0), "hide conffrm");
  EXPECT_EQ(rig.trace({"request"}).at(1),
            "request http://pacificnorthwest.localhost:17650/recenteqs/Quakes/quakes0.html");
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
  EXPECT_EQ(frmRecords->Label2(0).Caption(), "Seattle Area");
}

TEST(SettingsButton, RefreshesAtEveryLaterClosingToo) {
  RecordProperty("quirk", "area-index-stays");
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  conffrm->Combo2.Text = "Seattle Area";
  for (int closing = 1; closing <= 2; ++closing) {
    rig.press(frmRecords->Toolbar1, settings);
    rig.clear_trace();
    rig.press(frmRecords->Toolbar1, settings);
    EXPECT_EQ(rig.trace({"request"}).size(), 5u) << closing;
    EXPECT_EQ(Module1->AreaIndex, 1);
  }
}

TEST(SettingsButton, RefreshesNothingAfterAChangeOfAreaWithTheRefreshOff) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, settings);
  conffrm->Combo2.Text = "Seattle Area";
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, settings);
  EXPECT_TRUE(rig.trace({"request"}).empty());
  EXPECT_FALSE(frmRecords->Timer1.Enabled());
  EXPECT_EQ(Module1->RefreshCount, 0);
  EXPECT_FALSE(conffrm->IsShown());
}

TEST(SettingsButton, BringsTheSettingsBackWhenTheyAreLeftWithoutAnArea) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  rig.press(frmRecords->Toolbar1, settings);
  conffrm->Combo2.Text = "";
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, settings);
  EXPECT_EQ(rig.trace({"hide", "show"}), (Lines{"hide conffrm", "show conffrm"}));
  EXPECT_EQ(ButtonValue(refresh), 0);
  EXPECT_EQ(ButtonValue(settings), 1);
  EXPECT_FALSE(frmRecords->Timer1.Enabled());
}

TEST(SettingsButton, ComparesWithTheAreaOfTheStart) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  rig.press(frmRecords->Toolbar1, settings);
  rig.choose(conffrm->Combo2, "Seattle Area");
  rig.choose(conffrm->Combo2, "Los Angeles");
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, settings);
  EXPECT_TRUE(rig.trace({"request"}).empty());
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
}

// The other buttons.

TEST(LongBarButton, PutsTheLongBarInPlaceOfTheWindow) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, 3);
  EXPECT_EQ(rig.trace({"show", "hide"}), (Lines{"show newTagFrm", "hide frmRecords"}));
  EXPECT_EQ(Module1->BarMode, 2);
  EXPECT_TRUE(frmRecords->Timer1.IsCounting());
}

TEST(ShortBarButton, PutsTheShortBarInPlaceOfTheWindow) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  rig.clear_trace();
  rig.press(frmRecords->Toolbar1, 4);
  EXPECT_EQ(rig.trace({"show", "hide"}), (Lines{"show Form1", "hide frmRecords"}));
  EXPECT_EQ(Module1->BarMode, 1);
  EXPECT_TRUE(frmRecords->Timer1.IsCounting());
}

TEST(BarButtons, SetTheModeBeforeTheBarLoads) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, refresh);
  rig.screen().on_load = [&](FormBase &form) {
    rig.note(std::string(form.name()) + " loads in mode " + std::to_string(Module1->BarMode));
  };
  rig.press(frmRecords->Toolbar1, 3);
  rig.press(frmRecords->Toolbar1, 4);
  EXPECT_EQ(rig.trace({"newTagFrm", "Form1"}), (Lines{"newTagFrm loads in mode 2", "Form1 loads in mode 1"}));
}

TEST(BarButtons, LeaveTheTimersOfTheHiddenWindowRunning) {
  for (const int button : {3, 4}) {
    WatchingRig rig;
    rig.press(frmRecords->Toolbar1, refresh);
    rig.press(frmRecords->Toolbar1, button);
    EXPECT_FALSE(frmRecords->IsShown());
    EXPECT_TRUE(frmRecords->Timer3.IsCounting());
    Module1->RefreshCount = 700;
    rig.clear_trace();
    rig.tick(frmRecords->Timer1);
    EXPECT_EQ(rig.fetches(), 1);
  }
}

TEST(BarButtons, AreDisabledUntilTheRefreshIsFirstSwitchedOn) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, 3);
  rig.press(frmRecords->Toolbar1, 4);
  EXPECT_TRUE(rig.trace().empty());
  EXPECT_EQ(Form1.IfLoaded(), nullptr);
  EXPECT_EQ(newTagFrm.IfLoaded(), nullptr);
}

TEST(QuitButton, QuitsWithoutAQuestion) {
  WatchingRig rig;
  rig.press(frmRecords->Toolbar1, 5);
  EXPECT_TRUE(rig.trace({"message"}).empty());
  EXPECT_EQ(rig.end_status(), 0);
}

}  // namespace
}  // namespace borvane
