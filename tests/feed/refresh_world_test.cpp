#include <gtest/gtest.h>

#include "core/program.h"
#include "feed/refresh.h"
#include "support/plain_scanners.h"
#include "support/program/page_rig.h"

namespace borvane {
namespace {

const std::string headline = "Mag: 4.4  Where: 19 km S of Jaco, Costa Rica  Time: 21:39:20";

TEST(RefreshWorld, RunsItsStepsInOrder) {
  WatchingRig rig;
  rig.watch(*frmRecords, frmRecords->MousePointer, "MousePointer");
  rig.watch(frmRecords->Label3, frmRecords->Label3.Caption, "Label3.Caption");
  rig.watch(frmRecords->Label3, frmRecords->Label3.Tag, "Label3.Tag");
  rig.watch(frmRecords->Label3, frmRecords->Label3.ToolTipText, "Label3.ToolTipText");
  rig.watch(frmRecords->Label3, frmRecords->Label3.Visible, "Label3.Visible");
  rig.watch(frmRecords->Label8, frmRecords->Label8.Enabled, "Label8");
  rig.watch_rows(frmRecords->ListView1, "ListView1");
  rig.watch_rows(frmRecords->ListView2, "ListView2");
  frmRecords->Label8.Enabled = true;
  Module1->SiteRoot = southern + "/";
  rig.clear_trace();
  rig.happen(RefreshWorld);
  EXPECT_EQ(rig.trace({"set", "rows", "pump", "wait", "request", "write"}),
            (Lines{"set MousePointer=11", "pump in", "pump out", "request " + world_page, "wait in", "wait out",
                   "set Label3.Caption=" + headline,
                   "set Label3.Tag=" + southern + "/eqcenter/recenteqsww/Quakes/us1000chrt.html",
                   "set Label3.ToolTipText=Right click for options", "set Label8=false", "set Label3.Visible=true",
                   "set MousePointer=0"}));
}

TEST(RefreshWorld, SetsTheFlagDuringTheScanAlone) {
  WatchingRig rig;
  Flag during = flag_true;
  rig.during_request(world_page, [&] { during = Module1->GlobalScanFlag; });
  struct FlagAtHeadline : PropertyWatcher {
    Flag flag = flag_false;
    void PropertyChanged(const PropertyBase &property) override {
      if (&property == &frmRecords->Label3.Caption)
        flag = Module1->GlobalScanFlag;
    }
  } at_headline;
  frmRecords->Label3.Watch(&at_headline);
  rig.happen(RefreshWorld);
  frmRecords->Label3.Watch(nullptr);
  EXPECT_EQ(during, flag_false);
  EXPECT_EQ(at_headline.flag, flag_true);
  EXPECT_EQ(Module1->GlobalScanFlag, flag_false);
}

TEST(RefreshWorld, ReadsTheSamePageWhateverAreaIsChosen) {
  for (const char *area : {"", "Los Angeles", "All Alaska", "Worldwide 5+"}) {
    WatchingRig rig;
    conffrm->Combo2.Text = area;
    rig.happen(RefreshWorld);
    EXPECT_EQ(rig.trace({"request"}), Lines{"request " + world_page}) << area;
    EXPECT_EQ(frmRecords->Label3.Caption(), headline) << area;
  }
}

TEST(RefreshWorld, UsesTheHostThatTheStoreNames) {
  WatchingRig rig;
  rig.store().Put(R"(Software\Nalvorin\Borvane\Hosts)", "National", "world.example");
  rig.happen(RefreshWorld);
  EXPECT_EQ(rig.trace({"request"}), Lines{"request http://world.example/eqcenter/recenteqsww/Quakes/quakes_all.php"});
}

TEST(RefreshWorld, LeavesTheRefreshOfTheAreaAlone) {
  WatchingRig rig;
  rig.refresh();
  Module1->RefreshCount = 33;
  const std::string status = LastRefresh();
  rig.clock().Advance(100);
  rig.happen(RefreshWorld);
  EXPECT_EQ(Module1->RefreshCount, 33);
  EXPECT_EQ(Module1->SiteRoot, southern + "/");
  EXPECT_EQ(LastRefresh(), status);
  EXPECT_EQ(Newest(), "2.0");
  EXPECT_EQ(Rows(), 1);
  EXPECT_EQ(rig.store()["LastBig"], "2.0") << "the headline is no event of a list";
}

TEST(RefreshWorld, KeepsTheHeadlineOfAPageWithMapAndWithoutACell) {
  WatchingRig rig;
  rig.happen(RefreshWorld);
  rig.serve(world_page, "<p>MAP leads to a map.</p>");
  rig.happen(RefreshWorld);
  EXPECT_EQ(frmRecords->Label3.Caption(), headline);
  EXPECT_EQ(Module1->GlobalScanFlag, flag_false);
  EXPECT_EQ(frmRecords->MousePointer(), pointer_normal);
  EXPECT_TRUE(frmRecords->Label3.Visible());
}

TEST(RefreshWorld, EnablesItsLabelOnlyWhileTheHeadlineIsEmpty) {
  RecordProperty("quirk", "world-refresh-label-stays-disabled");
  WatchingRig rig;
  rig.serve(world_page, "<p>MAP leads to a map.</p>");
  rig.happen(RefreshWorld);
  EXPECT_FALSE(frmRecords->Label8.Enabled()) << "the headline says N/A";
  frmRecords->Label3.Caption = "";
  rig.happen(RefreshWorld);
  EXPECT_TRUE(frmRecords->Label8.Enabled());
  rig.serve(world_page, WorldPage(WorldRow()));
  rig.happen(RefreshWorld);
  EXPECT_FALSE(frmRecords->Label8.Enabled());
}

TEST(RefreshWorld, IsRunByItsLabelWhichIsThenDisabledWhateverThePageSays) {
  WatchingRig rig;
  frmRecords->Label3.Caption = "";
  frmRecords->Label8.Enabled = true;
  rig.serve(world_page, "<p>MAP leads to a map.</p>");
  rig.click(frmRecords->Label8);
  EXPECT_EQ(rig.trace({"request"}), Lines{"request " + world_page});
  EXPECT_FALSE(frmRecords->Label8.Enabled());
}

/// Expects what a failure in the scan leaves behind.
void ExpectFailedScan(Rig &rig) {
  EXPECT_EQ(rig.end_status(), std::nullopt);
  EXPECT_TRUE(rig.trace({"message", "error"}).empty());
  EXPECT_EQ(Module1->GlobalScanFlag, flag_true);
  EXPECT_EQ(frmRecords->MousePointer(), pointer_hourglass);
  EXPECT_EQ(frmRecords->Label3.Caption(), "N/A");
  EXPECT_FALSE(frmRecords->Label3.Visible());
}

TEST(RefreshWorld, LeavesTheHourglassAndTheFlagAfterAPageWithoutMap) {
  RecordProperty("quirk", "hourglass-stays-after-a-failed-headline");
  for (const char *page : {"", "<html></html>", "nowrap>4.4<"}) {
    WatchingRig rig;
    frmRecords->Label8.Enabled = true;
    rig.serve(world_page, page);
    rig.happen(RefreshWorld);
    ExpectFailedScan(rig);
    EXPECT_TRUE(frmRecords->Label8.Enabled()) << "the label is as it was";
    rig.serve(world_page, WorldPage(WorldRow()));
    rig.happen(RefreshWorld);
    EXPECT_EQ(Module1->GlobalScanFlag, flag_false) << "the next headline puts both back";
    EXPECT_EQ(frmRecords->MousePointer(), pointer_normal);
  }
}

TEST(RefreshWorld, ReadsWhatThereIsWhereverThePageIsCut) {
  const std::string page = WorldPage(WorldRow());
  for (std::size_t length = 0; length <= page.size(); ++length) {
    WatchingRig rig;
    rig.serve(world_page, page.substr(0, length));
    rig.happen(RefreshWorld);
    EXPECT_EQ(rig.end_status(), std::nullopt) << length;
    const plain::ScanResult expected = plain::ScanWorldHeadline(page.substr(0, length));
    EXPECT_EQ(frmRecords->Label3.Caption(), expected.elsewhere.empty() ? "N/A" : expected.elsewhere[0]) << length;
    EXPECT_EQ(Module1->GlobalScanFlag, expected.failure == 0 ? flag_false : flag_true) << length;
    EXPECT_EQ(frmRecords->MousePointer(), expected.failure == 0 ? pointer_normal : pointer_hourglass) << length;
  }
}

TEST(RefreshWorld, LeavesTheHourglassAndNotTheFlagAfterAFailedFetch) {
  WatchingRig rig;
  rig.refuse(world_page);
  rig.happen(RefreshWorld);
  EXPECT_EQ(rig.end_status(), std::nullopt);
  EXPECT_EQ(frmRecords->MousePointer(), pointer_hourglass);
  EXPECT_EQ(Module1->GlobalScanFlag, flag_false);
  EXPECT_FALSE(frmRecords->Label3.Visible());
  rig.refresh();
  EXPECT_EQ(frmRecords->MousePointer(), pointer_normal) << "the next refresh of the area resets the pointer";
}

TEST(RefreshWorld, LeavesTheHourglassWhenTheClientIsBusy) {
  RecordProperty("quirk", "busy-client-leaves-the-hourglass");
  WatchingRig rig;
  rig.hold_stubbornly(los_angeles);
  bool has_looked = false;
  rig.during_request(los_angeles, [&] {
    frmRecords->MousePointer = pointer_normal;
    rig.clear_trace();
    rig.happen(RefreshWorld);
    has_looked = true;
    EXPECT_TRUE(rig.trace({"request"}).empty());
    EXPECT_EQ(frmRecords->MousePointer(), pointer_hourglass);
    EXPECT_FALSE(frmRecords->Label3.Visible());
    EXPECT_EQ(Module1->GlobalScanFlag, flag_false);
  });
  rig.refresh();
  EXPECT_TRUE(has_looked);
}

TEST(RefreshWorld, DoesNotTrapAForeignException) {
  WatchingRig rig;
  rig.http().Break(world_page);
  rig.happen(RefreshWorld);
  EXPECT_EQ(rig.trace({"error", "end"}), (Lines{"error report 0 broken", "end 1"}));
}

TEST(RefreshWorld, SendsTheNextRefreshOfAWorldAreaToTheHeadlineAfterAFailure) {
  RecordProperty("quirk", "world-refresh-fills-the-headline");
  WatchingRig rig;
  rig.refresh();
  rig.serve(world_page, "");
  rig.happen(RefreshWorld);
  conffrm->Combo2.Text = "Worlwide <5";
  rig.serve(world_page, WorldPage(WorldRow("5.0") + WorldRow("4.4")));
  rig.refresh();
  EXPECT_EQ(frmRecords->Label3.Caption(), "Mag: 5.0  Where: 19 km S of Jaco, Costa Rica  Time: 21:39:20");
  EXPECT_FALSE(frmRecords->Label3.Visible()) << "it is written, and shown by the next headline";
  EXPECT_EQ(Newest(), "2.0");
  ASSERT_EQ(Rows(), 1) << "the rows of the area before are still listed";
  EXPECT_EQ(frmRecords->ListView1.ListItems(1).Text, "2.0");
  EXPECT_EQ(Module1->GlobalScanFlag, flag_true) << "a refresh of the list does not clear it";
  EXPECT_EQ(Module1->RefreshCount, 0) << "the refresh has ended normally";

  rig.happen(RefreshWorld);
  rig.refresh();
  EXPECT_EQ(Rows(), 2);
}

TEST(RefreshWorld, JoinsTheHeadlinesLinkToTheSiteOfTheArea) {
  RecordProperty("quirk", "headline-leads-to-the-areas-host");
  WatchingRig rig;
  rig.refresh();
  rig.happen(RefreshWorld);
  EXPECT_EQ(frmRecords->Label3.Tag(), southern + "/eqcenter/recenteqsww/Quakes/us1000chrt.html");
}

}  // namespace
}  // namespace borvane
