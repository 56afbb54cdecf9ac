#include <gtest/gtest.h>

#include "scan/event_rows.h"
#include "support/failure_of.h"
#include "support/program/list_rig.h"

namespace borvane {
namespace {

const Lines invalid_argument = {"error report 5 Invalid procedure call or argument"};
const Lines overflow = {"error report 6 Overflow"};
const Lines object_not_set = {"error report 91 Object variable not set"};

// The titles.

TEST(ColumnClick, SortsByTheClickedColumnAndTheOtherWayAtEachClick) {
  ListRig rig;
  BarRig::list({BarRig::row("2.0", "b"), BarRig::row("1.0", "c"), BarRig::row("3.0", "a")});
  ListView &events = ListRig::events();
  EXPECT_FALSE(events.Sorted());

  rig.click_title(1);
  EXPECT_TRUE(events.Sorted());
  EXPECT_EQ(events.SortKey(), 0);
  EXPECT_EQ(events.SortOrder(), 1);
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"3.0", "2.0", "1.0"}));

  rig.click_title(1);
  EXPECT_TRUE(events.Sorted());
  EXPECT_EQ(events.SortOrder(), 0);
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"1.0", "2.0", "3.0"}));

  rig.click_title(7);
  EXPECT_EQ(events.SortKey(), 6);
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"1.0", "2.0", "3.0"}));
  rig.click_title(7);
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"3.0", "2.0", "1.0"}));
}

TEST(ColumnClick, SortsByTextAndNotByNumber) {
  RecordProperty("quirk", "sorts-by-text");
  ListRig rig;
  BarRig::list({BarRig::row("2.0", ""), BarRig::row("10.0", ""), BarRig::row("5.1", "")});
  rig.click_title(1);
  rig.click_title(1);
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"10.0", "2.0", "5.1"}));
}

TEST(ColumnClick, FlipsTheOrderAlsoWithAnotherColumn) {
  RecordProperty("quirk", "any-title-flips-the-order");
  ListRig rig;
  BarRig::list({BarRig::row("1", "", "2018/02/07", "03:00"), BarRig::row("2", "", "2018/02/08", "02:00"),
                BarRig::row("3", "", "2018/02/06", "01:00")});
  rig.click_title(2);
  EXPECT_EQ(ListRig::events().SortKey(), 1);
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"2", "1", "3"})) << "the first click sorts in descending order";
  rig.click_title(3);
  EXPECT_EQ(ListRig::events().SortKey(), 2);
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"3", "2", "1"}));
}

TEST(ColumnClick, KeepsTheOrderOfEqualTexts) {
  ListRig rig;
  BarRig::list({BarRig::row("2", "same"), BarRig::row("3", "same"), BarRig::row("1", "same")});
  rig.click_title(7);
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"2", "3", "1"})) << "that of the page";
  rig.click_title(1);
  rig.click_title(7);
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"1", "2", "3"})) << "that of the column clicked before";
}

TEST(ColumnClick, SortsByTheFirstOfEqualTitles) {
  RecordProperty("quirk", "first-of-equal-titles-sorts");
  ListRig rig;
  SetupColumns(columns_until_first_scan);
  rig.click_title(9);
  EXPECT_EQ(ListRig::events().SortKey(), 6);
  rig.click_title(10);
  EXPECT_EQ(ListRig::events().SortKey(), 7);
}

TEST(ColumnClick, SortsByEveryColumnAlsoOneWithoutATitle) {
  for (const std::int32_t family : {columns_of_region_table, columns_until_first_scan, columns_of_events}) {
    ListRig rig;
    SetupColumns(family);
    ListRig::events().ListItems.Add({.Text = "1", .SubItemTexts = {"b", "c"}});
    ListRig::events().ListItems.Add({.Text = "2", .SubItemTexts = {"d", "a"}});
    for (int column = 1; column <= ListRig::events().ColumnHeaders.Count(); ++column) {
      rig.click_title(column);
      const bool is_second = family == columns_until_first_scan && (column == 9 || column == 10);
      EXPECT_EQ(ListRig::events().SortKey(), column - (is_second ? 3 : 1)) << family << " " << column;
      EXPECT_EQ(ListRig::magnitudes().size(), 2U);
    }
    EXPECT_EQ(rig.end_status(), std::nullopt);
  }
}

TEST(ColumnClick, SortsAnEmptyListOnceItIsFilled) {
  ListRig rig;
  BarRig::list({});
  rig.click_title(7);
  BarRig::list({BarRig::row("1", "a"), BarRig::row("2", "c"), BarRig::row("3", "b")});
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"2", "3", "1"}));
}

TEST(ColumnClick, HoldsForTheRefreshesThatFollow) {
  ListRig rig;
  rig.click_title(7);
  rig.click_title(7);
  rig.serve(los_angeles, Page(Row("4.0", "B") + Row("5.0", "A") + Row("6.0", "b") + Row("7.0", "a")));
  rig.refresh();
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"5.0", "7.0", "4.0", "6.0"}));
  EXPECT_TRUE(ListRig::events().Sorted());
  EXPECT_EQ(ListRig::events().SortKey(), 6);
  EXPECT_EQ(ListRig::events().SortOrder(), 0);
  EXPECT_EQ(Newest(), "4.0") << "the first row of the page";
  EXPECT_EQ(ListRig::events().SelectedItem().Text, "4.0");
}

TEST(ColumnClick, ChoosesAPlaceAndNotAColumn) {
  RecordProperty("quirk", "sort-stays-at-its-place");
  ListRig rig;
  SetupColumns(columns_until_first_scan);
  ASSERT_EQ(ListRig::events().ColumnHeaders(12).Text, "Where?");
  rig.click_title(12);
  rig.serve(los_angeles, Page(Row("4.0", "a") + Row("5.0", "b")));
  rig.refresh();
  EXPECT_EQ(ListRig::events().SortKey(), 11);
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"4.0", "5.0"})) << "the columns of a page are eight";

  rig.click_title(7);
  rig.click_title(7);
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"5.0", "4.0"}));
  conffrm->Combo2.Text = "All Alaska";
  rig.serve("http://alaska.localhost:17650/recenteqs_sub/", RegionPage(RegionRow()));
  rig.refresh();
  EXPECT_EQ(ListRig::events().SortKey(), 6);
  EXPECT_EQ(ListRig::events().ColumnHeaders(7).Text, "Depth");
}

TEST(ColumnClick, TakesTheSelectedRowWithIt) {
  ListRig rig;
  BarRig::list({BarRig::row("2.0", ""), BarRig::row("1.0", ""), BarRig::row("3.0", "")});
  ListRig::events().ListItems.Choose(2);
  rig.click_title(1);
  EXPECT_EQ(ListRig::events().SelectedItem().Text, "1.0");
  EXPECT_EQ(ListRig::events().SelectedRow(), 3);
}

// A click on a row.

TEST(ListClick, ShowsDepthAndPlaceOfTheSelectedRow) {
  ListRig rig;
  rig.click_list();
  EXPECT_EQ(ListRig::panel(1), "Depth: 26.5");
  EXPECT_EQ(ListRig::panel(2), "latitude: 34.495    longitude: 118.667");
  EXPECT_EQ(rig.trace({"request", "popup"}), Lines{});
}

TEST(ListClick, ShowsWhatTheNumbersAreAndTheDepthAsItIs) {
  const struct {
    std::string latitude;
    std::string longitude;
    std::string depth;
    std::string panel_1;
    std::string panel_2;
  } cases[] = {
      {"34.123N", "118.2W", " 26.50 km", "Depth:  26.50 km", "latitude: 34.123    longitude: 118.2"},
      {" -061.2000", "+150", "", "Depth: ", "latitude: -61.2    longitude: 150"},
      {"", "W", "?", "Depth: ?", "latitude: 0    longitude: 0"},
      {".5", "1e2E", "5", "Depth: 5", "latitude: 0.5    longitude: 100"},
      {"34.12345678", "1e8", "5", "Depth: 5", "latitude: 34.12346    longitude: 1E+08"},
  };
  for (const auto &one : cases) {
    ListRig rig;
    std::vector<std::string> row = BarRig::row("2.0", "Near");
    row[3] = one.latitude;
    row[4] = one.longitude;
    row[5] = one.depth;
    BarRig::list({row});
    rig.click_list();
    EXPECT_EQ(ListRig::panel(1), one.panel_1);
    EXPECT_EQ(ListRig::panel(2), one.panel_2);
  }
}

TEST(ListClick, ShowsTheRegionsDecimalSeparator) {
  ListRig rig;
  rig.region().SetDecimalSeparator(',');
  rig.click_list();
  EXPECT_EQ(ListRig::panel(2), "latitude: 34,495    longitude: 118,667");
}

TEST(ListClick, BesideTheRowsShowsTheSelectedOne) {
  RecordProperty("quirk", "click-beside-the-rows-reads-the-selected-one");
  ListRig rig;
  std::vector<std::string> second = BarRig::row("1.0", "Far");
  second[5] = "8";
  BarRig::list({BarRig::row("2.0", "Near"), second});
  ListRig::events().ListItems.Choose(2);
  rig.happen([] { ListRig::events().MouseUp.Raise({.button = 1, .shift = 0, .x = 9000, .y = 5400}); });
  EXPECT_EQ(ListRig::panel(1), "Depth: 8");
  rig.happen([] { ListRig::events().MouseUp.Raise({.button = 2, .shift = 0, .x = 9000, .y = 5400}); });
  EXPECT_EQ(rig.trace({"popup"}), Lines{"popup Tmnu of frmRecords"});
  EXPECT_FALSE(frmRecords->mnuReportIt.Enabled()) << "the selected row is a weak event";
}

TEST(ListClick, TakesThePlaceOfTheTimeOfTheLastRefreshAndTheOtherWayRound) {
  RecordProperty("quirk", "read-out-replaces-last-refresh");
  ListRig rig;
  const std::string refreshed = LastRefresh();
  EXPECT_TRUE(refreshed.starts_with("Last Refresh: ")) << refreshed;
  rig.click_list();
  EXPECT_EQ(LastRefresh(), "latitude: 34.495    longitude: 118.667");
  rig.refresh();
  EXPECT_EQ(LastRefresh(), refreshed);
  EXPECT_EQ(ListRig::panel(1), "Depth: 26.5") << "which a refresh leaves alone";
}

TEST(ListClick, DoesNothingOnAnEmptyList) {
  for (const char *area : {"Los Angeles", "All Alaska"}) {
    ListRig rig;
    conffrm->Combo2.Text = area;
    BarRig::list({});
    const std::string panel = ListRig::panel(2);
    rig.clear_trace();
    rig.click_list(1);
    rig.click_list(2);
    EXPECT_EQ(rig.trace(), Lines{}) << area;
    EXPECT_EQ(ListRig::panel(1), "");
    EXPECT_EQ(ListRig::panel(2), panel);
  }
}

TEST(ListClick, DoesNothingWithAnyOtherButton) {
  ListRig rig;
  const std::string panel = ListRig::panel(2);
  for (const int button : {0, 3, 4})
    rig.click_list(button);
  EXPECT_EQ(rig.trace(), Lines{});
  EXPECT_EQ(ListRig::panel(1), "");
  EXPECT_EQ(ListRig::panel(2), panel);
}

TEST(ListClick, EndsTheProgramWhereRowsAreListedAndNoneIsSelected) {
  for (const char *area : {"Los Angeles", "All Alaska"}) {
    for (const int button : {1, 2}) {
      ListRig rig;
      conffrm->Combo2.Text = area;
      ListRig::events().ListItems.Choose(0);
      rig.click_list(button);
      EXPECT_EQ(rig.trace({"request", "popup", "error"}), object_not_set) << area << " " << button;
      EXPECT_EQ(rig.end_status(), 1);
    }
  }
}

TEST(ListClick, EndsTheProgramForANumberBeyondSinglePrecision) {
  ListRig rig;
  std::vector<std::string> row = BarRig::row("2.0", "Near");
  row[4] = "1e39";
  BarRig::list({row});
  rig.click_list();
  EXPECT_EQ(rig.trace({"error"}), overflow);
  EXPECT_EQ(ListRig::panel(1), "");
}

// A click on a row of a region's table.

TEST(RegionClick, FillsTheRowFromTheEventsPageAndShowsIt) {
  ListRig rig;
  rig.list_alaska();
  rig.click_list();
  EXPECT_EQ(rig.trace({"request"}), Lines{"request " + nome_page});
  EXPECT_EQ(ListRig::sub_item(1, 4), "64.5");
  EXPECT_EQ(ListRig::sub_item(1, 5), "-165.4");
  EXPECT_EQ(ListRig::sub_item(1, 6), " 33 km");
  EXPECT_EQ(ListRig::panel(1), "Depth:  33 km");
  EXPECT_EQ(ListRig::panel(2), "latitude: 64.5    longitude: -165.4");
  EXPECT_EQ(ListRig::sub_item(2, 6), "12 km");
}

TEST(RegionClick, FetchesThePageAtEveryClick) {
  RecordProperty("quirk", "click-fetches-again");
  ListRig rig;
  rig.list_alaska();
  ListRig::events().ListItems.Choose(2);
  rig.click_list();
  rig.serve(adak_page, EventPageText("1", "2", "3"));
  rig.click_list();
  EXPECT_EQ(rig.trace({"request"}), (Lines{"request " + adak_page, "request " + adak_page}));
  EXPECT_EQ(ListRig::panel(2), "latitude: 1    longitude: 2");
  EXPECT_EQ(ListRig::sub_item(2, 6), "3");
}

TEST(RegionClick, MovesNoRowOfASortedList) {
  ListRig rig;
  SetupColumns(columns_of_region_table);
  rig.list_alaska();
  rig.serve(nome_page, EventPageText("64.5", "-165.4", "33 km"));
  rig.click_title(7);
  rig.click_title(7);
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"3.1", "2.9"}));
  rig.click_list();
  EXPECT_EQ(ListRig::magnitudes(), (Lines{"3.1", "2.9"}));
  EXPECT_EQ(ListRig::sub_item(1, 6) + ", " + ListRig::sub_item(2, 6), "33 km, 12 km");
}

TEST(RegionClick, EndsTheProgramWithoutThePageAndLeavesTheRowAsItIs) {
  const std::string whole = EventPageText("64.50", "-165.40", "33 km");
  for (const std::string &page : {std::string(), std::string("Not found"), whole.substr(0, whole.find("64.50") + 2),
                                  whole.substr(0, whole.find("-165"))}) {
    ListRig rig;
    rig.list_alaska();
    rig.serve(nome_page, page);
    const std::string panel = ListRig::panel(2);
    rig.click_list();
    EXPECT_EQ(rig.trace({"error"}), invalid_argument) << page;
    EXPECT_EQ(rig.end_status(), 1);
    EXPECT_EQ(ListRig::sub_item(1, 4) + ListRig::sub_item(1, 5) + ListRig::sub_item(1, 6), "");
    EXPECT_EQ(ListRig::panel(1), "");
    EXPECT_EQ(ListRig::panel(2), panel);
  }
}

TEST(RegionClick, EndsTheProgramWhenTheHostCannotBeReached) {
  ListRig rig;
  rig.list_alaska();
  rig.refuse(nome_page);
  rig.click_list();
  EXPECT_EQ(rig.trace({"request", "error"}), (Lines{"request " + nome_page, invalid_argument[0]}));
}

TEST(RegionClick, KeepsTheCoordinatesOfAPageWithoutADepth) {
  ListRig rig;
  rig.list_alaska();
  const std::string whole = EventPageText("64.50", "-165.40", "33 km");
  rig.serve(nome_page, whole.substr(0, whole.find("33 km")));
  rig.click_list();
  EXPECT_EQ(rig.trace({"error"}), invalid_argument);
  EXPECT_EQ(ListRig::sub_item(1, 4), "64.5");
  EXPECT_EQ(ListRig::sub_item(1, 6), "");
}

TEST(RegionClick, TakesALatitudeForAnAddressWhereTheRowsAreThoseOfAnotherArea) {
  RecordProperty("quirk", "links-go-by-the-chosen-area");
  ListRig rig;
  conffrm->Combo2.Text = "All Alaska";
  rig.click_list();
  EXPECT_EQ(rig.trace({"request", "error"}), (Lines{"request 34.495N", invalid_argument[0]}));
  EXPECT_EQ(rig.end_status(), 1);
}

TEST(RegionClick, IsOneOnAnyOtherRowOnceAnotherAreaIsChosen) {
  ListRig rig;
  rig.list_alaska();
  conffrm->Combo2.Text = "all alaska";
  ListRig::events().ListItems.Choose(2);
  rig.click_list();
  EXPECT_EQ(rig.trace({"request"}), Lines{});
  EXPECT_EQ(ListRig::panel(1), "Depth: -176.60");
  EXPECT_EQ(ListRig::panel(2), "latitude: 0    longitude: 51.8");
}

TEST(RegionClick, EndsTheProgramWhenTheListIsEmptiedMeanwhile) {
  ListRig rig;
  rig.list_alaska();
  rig.during_request(nome_page, [] { ListRig::events().ListItems.Clear(); });
  rig.click_list();
  EXPECT_EQ(rig.trace({"error"}), object_not_set);
}

TEST(RegionClick, EndsTheProgramWhenTheUserClicksOnWhileAHostDoesNotAnswer) {
  RecordProperty("quirk", "click-on-a-waiting-event-ends-the-program");
  ListRig rig;
  rig.list_alaska();
  rig.http().Hold(nome_page);
  rig.during_request(nome_page, [&] {
    ListRig::events().ListItems.Choose(2);
    rig.click_list();
    rig.note("panel " + ListRig::panel(2));
  });
  rig.click_list();
  EXPECT_EQ(rig.trace({"request", "cancel", "panel", "error"}),
            (Lines{"request " + nome_page, "cancel " + nome_page, "request " + adak_page,
                   "panel latitude: 51.8    longitude: -176.6", invalid_argument[0]}))
      << "the later click takes the client over, so the first one gets no page";
}

TEST(RegionClick, WritesTheDepthAtThePlaceOfTheClickWhateverTheSortHasPutThere) {
  ListRig rig;
  rig.list_alaska();
  rig.during_request(nome_page, [&] { rig.click_title(1); });
  rig.click_title(1);
  rig.clear_trace();
  ASSERT_EQ(ListRig::magnitudes(), (Lines{"3.1", "2.9"}));
  ListRig::events().ListItems.Choose(1);
  rig.click_list();

  EXPECT_EQ(ListRig::magnitudes(), (Lines{"2.9", "3.1"}));
  EXPECT_EQ(ListRig::sub_item(1, 6), " 33 km") << "the row that is first when the page has come";
  EXPECT_EQ(ListRig::sub_item(2, 4), "64.5") << "the row that is selected then";
  EXPECT_EQ(rig.trace({"error"}), Lines{});
}

TEST(RegionClick, ReadsTheEventsPageOfTheTableThatHasBeenRefreshed) {
  ListRig rig;
  conffrm->Combo2.Text = "All Alaska";
  rig.serve("http://alaska.localhost:17650/recenteqs_sub/", RegionPage(RegionRow()));
  rig.serve("http://alaska.localhost:17650/recenteqs_sub/Quakes/ak18384056.html", EventPageText());
  rig.refresh();
  rig.click_list();
  EXPECT_EQ(ListRig::panel(1), "Depth: 35.0 km");
  EXPECT_EQ(ListRig::panel(2), "latitude: 61.726    longitude: -149.9");
}

// The menu of the rows.

/// Whether "Submit Report" and "View Reports" can be chosen after a right click on an event of that magnitude.
std::string ReportEntries(const std::string &magnitude) {
  ListRig rig;
  frmRecords->mnuReportIt.Enabled = magnitude != "3.0";
  BarRig::list({BarRig::row(magnitude, "Near")});
  std::string entries;
  rig.screen().on_popup = [&](Menu & /*menu*/) {
    entries = std::string(frmRecords->mnuReportIt.Enabled() ? "submit " : "") +
              (frmRecords->mnuViewReps.Enabled() ? "view" : "");
  };
  rig.click_list(2);
  EXPECT_EQ(rig.trace({"popup", "request", "error"}), Lines{"popup Tmnu of frmRecords"});
  return entries;
}

TEST(ListMenu, OffersReportsFromMagnitudeThreeOn) {
  for (const char *magnitude : {"2.9", "2.999", "", "M 5.0", "0", "-5", " 2.9 Ml", "10e-1"})
    EXPECT_EQ(ReportEntries(magnitude), "") << magnitude;
  for (const char *magnitude : {"3.0", "3", "10.0", " 3.1 Ml", "5.2*", "0.3e1"})
    EXPECT_EQ(ReportEntries(magnitude), "submit view") << magnitude;
}

TEST(ListMenu, EntryIsThatOfTheRowThatIsSelectedWhenItIsChosen) {
  RecordProperty("quirk", "menu-outlives-its-row");
  ListRig rig;
  BarRig::list({BarRig::row("2.0", "first"), BarRig::row("1.0", "clicked")});
  ListRig::events().ListItems.Choose(2);
  rig.serve(los_angeles, Page(Row("4.0", "newest")));
  std::string before;
  std::string after;
  rig.screen().on_popup = [&](Menu & /*menu*/) {
    before = frmRecords->MakeEventKey();
    rig.refresh();
    after = frmRecords->MakeEventKey();
  };
  rig.click_list(2);

  EXPECT_EQ(before.substr(0, 4), "1.0-");
  EXPECT_EQ(after.substr(0, 4), "4.0-") << "a refresh makes its newest event the selected one";
}

TEST(ListMenu, FetchesNothingForARowOfARegion) {
  ListRig rig;
  rig.list_alaska();
  rig.click_list(2);
  EXPECT_EQ(rig.trace({"request", "popup"}), Lines{"popup Tmnu of frmRecords"});
  EXPECT_TRUE(frmRecords->mnuReportIt.Enabled());
}

TEST(ListMenu, StaysAsTheLastRightClickLeftIt) {
  ListRig rig;
  rig.click_list(2);
  EXPECT_FALSE(frmRecords->mnuViewReps.Enabled());
  BarRig::list({BarRig::row("5.0", "Near")});
  rig.click_list(1);
  EXPECT_FALSE(frmRecords->mnuViewReps.Enabled());
}

TEST(ListMenu, EndsTheProgramForAMagnitudeBeyondDoublePrecision) {
  ListRig rig;
  BarRig::list({BarRig::row("1e999", "Near")});
  rig.click_list(2);
  EXPECT_EQ(rig.trace({"popup", "error"}), overflow);
}

TEST(ListMenu, HasItsEntriesInTheirOrder) {
  ListRig rig;
  const auto entries = [](const Menu &menu) {
    Lines lines = {std::string(menu.name()) + " " + menu.Caption()};
    for (Control *control : menu.children()) {
      const auto &entry = dynamic_cast<MenuItem &>(*control);
      lines.push_back(std::string(entry.name()) + " " + entry.Caption());
      EXPECT_TRUE(entry.Enabled() && entry.Visible() && !entry.Checked()) << entry.name();
    }
    return lines;
  };
  EXPECT_EQ(entries(frmRecords->Tmnu),
            (Lines{"Tmnu Menu", "mnuMapGoo Open in Google Maps", "mnuOpenMap More Info", "mnuReportIt Submit Report",
                   "mnuViewReps View Reports", "mnuGrid Grid lines"}));
  EXPECT_EQ(entries(frmRecords->TmnuGlobal), (Lines{"TmnuGlobal Global Menu", "mnuGlobalInfo More Info",
                                                    "mnuWiki Consult Wiki", "mnuwikipassGoogle Wiki through Google"}));
}

// Rows cannot be edited.

TEST(BeforeLabelEdit, IsCancelled) {
  ListRig rig;
  Integer cancel = 0;
  ListRig::events().BeforeLabelEdit.Raise(cancel);
  EXPECT_EQ(cancel, 1);
  EXPECT_FALSE(ListRig::events().AllowsLabelEdit());
}

// Grid lines.

TEST(GridLines, AreSwitchedByTheirEntryAndStored) {
  ListRig rig;
  EXPECT_FALSE(ListRig::events().GridLines());
  rig.click(frmRecords->mnuGrid);
  EXPECT_TRUE(frmRecords->mnuGrid.Checked());
  EXPECT_TRUE(ListRig::events().GridLines());
  rig.click(frmRecords->mnuGrid);
  EXPECT_FALSE(frmRecords->mnuGrid.Checked());
  EXPECT_FALSE(ListRig::events().GridLines());
  EXPECT_EQ(rig.trace(), (Lines{"write Grid=1", "write Grid=0"}));
}

TEST(GridLines, SurviveARestart) {
  std::string stored;
  for (const bool on : {true, false, true}) {
    Rig rig;
    rig.store()["Grid"] = stored;
    rig.start();
    EXPECT_EQ(frmRecords->mnuGrid.Checked(), !on);
    EXPECT_EQ(frmRecords->ListView1.GridLines(), !on);
    rig.click(frmRecords->mnuGrid);
    stored = rig.store().TextOf("Grid");
    EXPECT_EQ(stored, on ? "1" : "0");
  }
}

// What ties a report to an event.

TEST(MakeEventKey, JoinsTheFirstFiveTextsOfTheSelectedRow) {
  ListRig rig;
  BarRig::list({BarRig::row("2.0", "Near"), BarRig::row("5.1", "Far", "2018/02/08", "02:30:00")});
  EXPECT_EQ(frmRecords->MakeEventKey(), "2.0-2018:02:07-01:26:13-34.495N-118.667W");
  ListRig::events().ListItems.Choose(2);
  EXPECT_EQ(frmRecords->MakeEventKey(), "5.1-2018:02:08-02:30:00-34.495N-118.667W");
  EXPECT_EQ(ListRig::sub_item(2, 1), "2018/02/08") << "the row itself stays";
}

TEST(MakeEventKey, TurnsEverySlashAndMarksNoHyphen) {
  ListRig rig;
  BarRig::list({{"//", "a-b", "/", "", "x/y/"}});
  EXPECT_EQ(frmRecords->MakeEventKey(), "::-a-b-:--x:y:");
  BarRig::list({{""}});
  EXPECT_EQ(frmRecords->MakeEventKey(), "----");
}

TEST(MakeEventKey, FailsWithoutASelectedRow) {
  ListRig rig;
  BarRig::list({});
  EXPECT_EQ(FailureOf([] { frmRecords->MakeEventKey(); }), 91);
}

}  // namespace
}  // namespace borvane
