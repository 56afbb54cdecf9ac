#include "feed/refresh.h"

#include <gtest/gtest.h>

#include "bars/Form1.h"
#include "feed/area.h"
#include "support/program/log_rig.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

/// Traces what a refresh does to the records window.
void WatchRecords(Rig &rig) {
  rig.watch(*frmRecords, frmRecords->MousePointer, "MousePointer");
  rig.watch(*frmRecords, frmRecords->Caption, "Caption");
  rig.watch(frmRecords->Timer1, frmRecords->Timer1.Enabled, "Timer1");
  rig.watch(frmRecords->StatusBar1.Panels(2), frmRecords->StatusBar1.Panels(2).Text, "Panels(2)");
  rig.watch_rows(frmRecords->ListView1, "ListView1");
}

TEST(RefreshEvents, RunsItsStepsInOrder) {
  WatchingRig rig;
  rig.clock().Set({.year = 2018, .month = 2, .day = 7, .hour = 13, .minute = 5, .second = 9});
  rig.serve(set_online, "ok");
  frmRecords->Timer1.Enabled = true;
  WatchRecords(rig);
  rig.refresh();
  EXPECT_EQ(rig.trace({"pump", "wait", "request", "set", "rows"}),
            (Lines{"pump in", "pump out", "request " + set_online, "wait in", "wait out", "set MousePointer=11",
                   "set Timer1=false", "pump in", "pump out", "request " + los_angeles, "wait in", "wait out",
                   "rows ListView1 cleared", "rows ListView1 1 added", "set Panels(2)=Last Refresh: 13:05:09",
                   "set Caption=2.0 - Borvane - Last Events", "set MousePointer=0", "set Timer1=true"}));
}

TEST(RefreshEvents, CountsItsRunAtTheServiceOnce) {
  WatchingRig rig;
  Module1->RunCount = 10;
  rig.serve(add_run, "");
  rig.refresh();
  EXPECT_EQ(rig.trace({"request"}), (Lines{"request " + set_online, "request " + add_run, "request " + los_angeles}));
  EXPECT_EQ(Module1->RunCount, -1);
  rig.clear_trace();
  rig.refresh();
  EXPECT_EQ(rig.trace({"request"}), (Lines{"request " + set_online, "request " + los_angeles}));
}

TEST(RefreshEvents, CountsOnlyRunsThatAreAMultipleOfTen) {
  for (const auto &[stored, calls] : std::initializer_list<std::pair<const char *, std::size_t>>{
           {"9", 1}, {"10", 0}, {"19", 1}, {"8", 0}, {"", 0}, {"-1", 1}, {"-11", 1}, {"-2", 0}}) {
    Rig rig;
    rig.store()["RunTime"] = stored;
    rig.store()["Area"] = "Los Angeles";
    rig.start();
    rig.serve(add_run, "");
    rig.serve(los_angeles, Page(Row()));
    rig.key('R');
    const Lines requests = rig.trace({"request"});
    EXPECT_EQ(static_cast<std::size_t>(std::count(requests.begin(), requests.end(), "request " + add_run)), calls)
        << stored;
  }
}

TEST(RefreshEvents, StopsTheTimerAndTheCountInModeThree) {
  WatchingRig rig;
  frmRecords->Timer1.Enabled = true;
  Module1->RefreshCount = 70;
  bool has_looked = false;
  rig.during_request(los_angeles, [&] {
    has_looked = true;
    EXPECT_FALSE(frmRecords->Timer1.Enabled());
    EXPECT_EQ(frmRecords->MousePointer(), pointer_hourglass);
    EXPECT_EQ(Module1->RefreshCount, 0);
  });
  rig.refresh();
  EXPECT_TRUE(has_looked);
}

TEST(RefreshEvents, EmptiesTheShortBarsFirstLabelOnlyInModeOne) {
  for (const auto &[mode, caption] :
       std::initializer_list<std::pair<int, const char *>>{{1, ""}, {0, "2.0"}, {2, "2.0"}, {3, "2.0"}, {-1, "2.0"}}) {
    WatchingRig rig;
    Form1->Label1(0).Caption = "2.0";
    std::string during;
    rig.during_request(los_angeles, [&] { during = Form1->Label1(0).Caption(); });
    rig.refresh(mode);
    EXPECT_EQ(during, caption) << mode;
    EXPECT_EQ(Form1->Label1(0).Caption(), caption) << mode;
  }
}

TEST(RefreshEvents, LeavesTheTimerThePointerAndTheCountAloneInAnyOtherMode) {
  for (const int mode : {0, 1, 2, 4, -3}) {
    WatchingRig rig;
    frmRecords->Timer1.Enabled = true;
    frmRecords->MousePointer = 2;
    Module1->RefreshCount = 70;
    WatchRecords(rig);
    int count = 0;
    rig.during_request(los_angeles, [&] { count = Module1->RefreshCount; });
    rig.refresh(mode);
    EXPECT_EQ(count, 70) << mode;
    EXPECT_EQ(rig.trace({"set"}),
              (Lines{"set Panels(2)=Last Refresh: 01:30:15", "set Caption=2.0 - Borvane - Last Events"}))
        << mode;
  }
}

TEST(RefreshEvents, StartsTheTimerAtItsEndInEveryMode) {
  for (const int mode : {0, 1, 2, 3, 4, -3}) {
    WatchingRig rig;
    // The short bar, which mode 1 refers to, switches the refresh on when it loads.
    static_cast<void>(*Form1);
    frmRecords->Timer1.Enabled = false;
    bool during = true;
    rig.during_request(los_angeles, [&] { during = frmRecords->Timer1.Enabled(); });
    rig.refresh(mode);
    EXPECT_FALSE(during) << mode;
    EXPECT_TRUE(frmRecords->Timer1.Enabled()) << mode;
  }
}

TEST(RefreshEvents, LoadsNoShortBarInModeThree) {
  WatchingRig rig;
  rig.refresh();
  EXPECT_EQ(Form1.IfLoaded(), nullptr);
}

TEST(RefreshEvents, ReadsTheAlertThresholdFromTheBoxAtEachRefresh) {
  WatchingRig rig;
  EXPECT_EQ(Module1->AlertThreshold, 0) << "nothing has been refreshed yet";
  for (const auto &[text, threshold] : std::initializer_list<std::pair<const char *, float>>{
           {"3.5", 3.5F}, {" 4.25 M", 4.25F}, {"abc", 0}, {"", 0}, {"-1", -1}}) {
    conffrm->Text1.Text = text;
    rig.refresh();
    EXPECT_EQ(Module1->AlertThreshold, threshold) << text;
  }
}

TEST(RefreshEvents, ReadsTheAlertThresholdBeforeTheAddressOfThePage) {
  {
    WatchingRig rig;
    conffrm->Text1.Text = "4.5";
    conffrm->Text6(0).Text = "40000";
    rig.refresh();
    EXPECT_EQ(Module1->AlertThreshold, 4.5F) << "the address fails after the threshold has been read";
  }
  WatchingRig rig;
  conffrm->Text1.Text = "1e39";
  Module1->SiteRoot = "http://before/";
  rig.refresh();
  EXPECT_EQ(Module1->SiteRoot, "http://before/") << "the threshold fails before the address is set";
}

TEST(RefreshEvents, IsBusyFromTheChoiceOfThePageToTheEnd) {
  WatchingRig rig;
  Module1->RunCount = 10;
  rig.serve(set_online, "");
  rig.serve(add_run, "");
  frmRecords->Timer1.Enabled = true;
  std::string states;
  const auto look = [&](const char *where) {
    states += std::string(where) + (frmRecords->Timer1.Enabled() ? " on" : " off") +
              (Module1->RefreshBusy == flag_true ? " busy, " : " free, ");
  };
  rig.during_request(set_online, [&] { look("presence"); });
  rig.during_request(add_run, [&] { look("count of runs"); });
  constexpr int pumps_until_then = 4;  // one for the client and one for the answer, twice
  rig.during_pump(pumps_until_then + 1, [&] { look("choice of the page"); });
  rig.during_request(los_angeles, [&] { look("fetch"); });
  rig.refresh();
  look("end");
  EXPECT_EQ(states,
            "presence on free, count of runs off free, choice of the page off busy, fetch off busy, end on free, ");
}

TEST(RefreshEvents, KeepsTheWholeAddressUntilThePageIsThereAndThenItsRoot) {
  WatchingRig rig;
  std::string during;
  rig.during_request(los_angeles, [&] { during = Module1->SiteRoot; });
  rig.refresh();
  EXPECT_EQ(during, los_angeles);
  EXPECT_EQ(Module1->SiteRoot, southern + "/");
}

TEST(RefreshEvents, CutsTheAddressAfterTheFirstSlashFromPositionNineOn) {
  for (const auto &[address, root] :
       std::initializer_list<std::pair<const char *, const char *>>{{"http://h/a/b", "http://h/"},
                                                                    {"http:///a/b", "http:///a/"},
                                                                    {"12345678/", "12345678/"},
                                                                    {"1234567/9", ""},
                                                                    {"http://host", ""}}) {
    WatchingRig rig;
    conffrm->Combo2.Text = "no entry";
    Module1->SiteRoot = address;
    rig.serve(address, "page");
    rig.refresh();
    EXPECT_EQ(Module1->SiteRoot, root) << address;
  }
}

TEST(RefreshEvents, LeavesTheCountAtZeroAndTheTimerRunning) {
  WatchingRig rig;
  rig.during_request(los_angeles, [] { Module1->RefreshCount = 5; });
  rig.refresh();
  EXPECT_EQ(Module1->RefreshCount, 0);
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
  EXPECT_EQ(Module1->RefreshBusy, flag_false);
}

TEST(RefreshEvents, NamesTheWindowByItsListBeforeTheFirstEvent) {
  WatchingRig rig;
  rig.serve(los_angeles, "a page without rows");
  rig.refresh();
  EXPECT_EQ(frmRecords->Caption(), "Mag - Borvane - Last Events");
  EXPECT_EQ(LastRefresh(), "Last Refresh: 01:30:15");
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 0);
}

TEST(RefreshEvents, RebuildsTheListEachTime) {
  WatchingRig rig;
  rig.refresh();
  rig.refresh();
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 1);
}

TEST(RefreshEvents, ReadsAnErrorPageAsAPageWithoutRows) {
  WatchingRig rig;
  rig.serve(los_angeles, "<html><body>404 Not Found</body></html>");
  rig.refresh();
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 0);
  EXPECT_EQ(LastRefresh(), "Last Refresh: 01:30:15");
}

TEST(RefreshEvents, SendsEveryTextThatIsNoScannersAreaToTheQuakesList) {
  for (const char *area : {"Los Angeles", "Seattle Area", "Central US", "San Andreas (fault)", "", "Atlantis"}) {
    WatchingRig rig;
    conffrm->Combo2.Text = area;
    Module1->SiteRoot = "http://host/page";
    GetAreaUrl();
    rig.serve(Module1->SiteRoot, Page(Row("3.1")));
    rig.refresh();
    EXPECT_EQ(Newest(), "3.1") << area;
  }
}

TEST(RefreshEvents, ChoosesTheScannerByTheAreasTextEvenForAPageChosenByCoordinates) {
  RecordProperty("quirk", "scanner-follows-area-text");
  WatchingRig rig;
  conffrm->Combo2.Text = "Worldwide 5+";
  conffrm->Check4.Value = 1;
  conffrm->Text6(0).Text = "116";
  conffrm->Text6(1).Text = "33";
  rig.serve(southern + "/recenteqs/Maps/116-33.html", Page(Row("3.1")));
  rig.refresh();
  EXPECT_EQ(rig.trace({"request"}).back(), "request " + southern + "/recenteqs/Maps/116-33.html");
  EXPECT_EQ(Newest(), "Mag") << "the world list's scanner finds nothing in this page";
}

TEST(RefreshEvents, FetchesTheCoordinatePageWhenNothingIsChosen) {
  WatchingRig rig;
  conffrm->Combo2.Text = "";
  rig.serve(southern + "/recenteqs/Maps/0-0.html", Page(Row("3.1")));
  rig.refresh();
  EXPECT_EQ(Newest(), "3.1");
}

TEST(RefreshEvents, ReadsEachPageByTheScannerOfItsForm) {
  struct Case {
    const char *area;
    const char *address;
    std::string page;
  };
  for (const Case &each : std::initializer_list<Case>{
           {"Intermountain West", "http://utah.localhost:17650/req2webdir/recenteqs/Quakes/quakes0.html",
            MapPage(CapitalMapRow("2.4") + MapRow())},
           {"NorthEastern", "http://northeastern.localhost:17650/LCSN/recenteqs/Quakes/quakes0.html",
            MapPage(CapitalMapRow("2.4") + MapRow())},
           {"Puerto Rico", "http://puertorico.localhost:17650/recenteqs/eqs_all.htm",
            AnchorPage(AnchorRow("2.4") + AnchorRow())},
           {"Worlwide <5", "http://national.localhost:17650/eqcenter/recenteqsww/Quakes/quakes_all.php",
            WorldPage(WorldRow("2.4") + WorldRow())},
           {"Worldwide 5+", "http://national.localhost:17650/eqcenter/recenteqsww/Quakes/quakes_big.php",
            WorldPage(WorldRow("2.4") + WorldRow())}}) {
    WatchingRig rig;
    conffrm->Combo2.Text = each.area;
    rig.serve(each.address, each.page);
    rig.refresh();
    EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 2) << each.area;
    EXPECT_EQ(Newest(), "2.4") << each.area;
    EXPECT_EQ(LastRefresh(), "Last Refresh: 01:30:15") << each.area;
  }
  WatchingRig rig;
  conffrm->Combo2.Text = "All Alaska";
  rig.serve("http://alaska.localhost:17650/recenteqs_sub/", RegionPage(RegionRow()));
  rig.refresh();
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 1);
  EXPECT_EQ(frmRecords->ListView1.ColumnHeaders.Count(), 7);
  EXPECT_EQ(LastRefresh(), "Last Refresh: 01:30:15");
}

TEST(RefreshEvents, FetchesTheCoordinatePageOnceAHeadingHasBeenSelected) {
  RecordProperty("quirk", "heading-leads-to-the-coordinates");
  WatchingRig rig;
  rig.choose(conffrm->Combo2, "* ALASKA");
  rig.refresh();
  EXPECT_EQ(rig.trace({"request"}).back(), "request " + southern + "/recenteqs/Maps/0-0.html");
  EXPECT_EQ(rig.store()["Area"], "Los Angeles");
}

TEST(RefreshEvents, WaitsForASlowAnswer) {
  WatchingRig rig;
  rig.serve(los_angeles, Page(Row("3.1")), 50);
  rig.refresh();
  EXPECT_EQ(Newest(), "3.1");
  EXPECT_EQ(rig.trace({"wait"}).size(), 2 * (1 + 50u));
}

TEST(RefreshEvents, StartsTheClockEvenWhileTheRefreshIsSwitchedOff) {
  RecordProperty("quirk", "any-refresh-starts-the-clock");
  WatchingRig rig;
  ASSERT_FALSE(frmRecords->Timer1.Enabled());
  rig.key('R');
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
  EXPECT_EQ(frmRecords->Toolbar1.Buttons(1).Value(), 0);
  EXPECT_EQ(frmRecords->StatusBar1.Panels(3).Text(), "Auto Refresh Off");
}

TEST(RefreshEvents, WritesTheLogAndThenEnablesLogs) {
  WatchingRig rig;
  conffrm->Check1.Value = 1;
  rig.watch(frmRecords->Label5, frmRecords->Label5.Enabled, "Label5");
  rig.watch(frmRecords->Timer1, frmRecords->Timer1.Enabled, "Timer1");
  rig.refresh();
  const std::string line = "2.0 2018/02/07 01:26:13 34.495N 118.667W 26.5 4 km ( 2 mi) W of Castaic, CA\r\n";
  EXPECT_EQ(rig.files().ContentOf(log_path), line);
  EXPECT_EQ(rig.trace({"set", "append"}), (Lines{"set Timer1=true", "append " + log_path + " ",
                                                 "append " + log_path + " " + line, "set Label5=true"}));
  rig.refresh();
  EXPECT_EQ(rig.files().ContentOf(log_path), line);
}

TEST(RefreshEvents, LooksForTheLogButWritesNoneWhileTheBoxIsNotTicked) {
  for (const int value : {0, 2}) {
    WatchingRig rig;
    conffrm->Check1.Value = value;
    rig.clear_trace();
    rig.refresh();
    EXPECT_EQ(rig.trace({"folder", "exists", "make-folder", "append"}), (Lines{"folder 5", "exists " + log_path}))
        << value;
  }
}

TEST(RefreshEvents, WritesTheLogEvenWhenNothingHasBeenFetched) {
  WatchingRig rig;
  rig.refresh();
  conffrm->Check1.Value = 1;
  rig.hold_stubbornly("http://host/busy");
  rig.during_request("http://host/busy", [&] { rig.refresh(); });
  rig.happen([] {
    try {
      conffrm->Inet1.OpenURL("http://host/busy");
    } catch (const RuntimeError &) {
      // The request that never stops ends with its time-out.
    }
  });
  EXPECT_TRUE(rig.files().ContentOf(log_path).has_value());
}

TEST(RefreshEvents, CountsAsFinishedWhenTheClientIsBusy) {
  RecordProperty("quirk", "busy-client-counts-as-refreshed");
  WatchingRig rig;
  rig.refresh();
  rig.clock().Advance(100);
  rig.hold_stubbornly("http://host/busy");
  rig.during_request("http://host/busy", [&] {
    rig.clear_trace();
    Module1->RefreshCount = 70;
    rig.refresh();
    EXPECT_TRUE(rig.trace({"request"}).empty());
    EXPECT_EQ(LastRefresh(), "Last Refresh: 01:31:55");
    EXPECT_EQ(Module1->RefreshCount, 0);
    EXPECT_EQ(Module1->RefreshBusy, flag_false);
    EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 1);
    EXPECT_EQ(Module1->SiteRoot, los_angeles) << "nothing has been fetched, so nothing is cut";
  });
  rig.happen([] {
    try {
      conffrm->Inet1.OpenURL("http://host/busy");
    } catch (const RuntimeError &) {
      // The request that never stops ends with its time-out.
    }
  });
  EXPECT_EQ(LastRefresh(), "Last Refresh: 01:31:55");
}

TEST(RefreshEvents, SkipsEverythingUpToTheEndWhenTheClientIsBusyBeforeTheCallToTheService) {
  WatchingRig rig;
  Module1->RunCount = 10;
  Module1->SiteRoot = "http://before/";
  rig.hold_stubbornly("http://host/busy");
  rig.during_request("http://host/busy", [&] {
    rig.clear_trace();
    rig.refresh();
    EXPECT_TRUE(rig.trace({"request"}).empty());
    EXPECT_EQ(LastRefresh(), "Last Refresh: 01:30:15");
    EXPECT_EQ(Module1->RunCount, 10);
    EXPECT_EQ(Module1->AlertThreshold, 0);
    EXPECT_EQ(Module1->SiteRoot, "http://before/");
  });
  rig.happen([] {
    try {
      conffrm->Inet1.OpenURL("http://host/busy");
    } catch (const RuntimeError &) {
      // As above.
    }
  });
  EXPECT_EQ(LastRefresh(), "Last Refresh: 01:30:15");
}

}  // namespace
}  // namespace borvane
