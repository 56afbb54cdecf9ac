#include "records/links.h"

#include <gtest/gtest.h>

#include "alert/frmQalert.h"
#include "feed/hosts.h"
#include "support/failure_of.h"
#include "support/program/list_rig.h"

namespace borvane {
namespace {

std::string MapPage() {
  std::string address = "left over";
  OpenMapPage(address);
  return address;
}

/// A list of two rows with the links of `links`.
void ListLinks(const std::string &first, const std::string &second) {
  std::vector<std::string> one = BarRig::row("2.0", "Near");
  std::vector<std::string> two = BarRig::row("1.0", "Far");
  one[7] = first;
  two[7] = second;
  BarRig::list({one, two});
}

TEST(OpenMapPage, JoinsTheSelectedRowsLinkToTheSite) {
  BarRig rig;
  ListLinks("a/1.html", "b 2.html");
  EXPECT_EQ(MapPage(), southern + "/a/1.html") << "the first row added is the selected one";
  frmRecords->ListView1.ListItems.Choose(2);
  EXPECT_EQ(MapPage(), southern + "/b 2.html");
}

TEST(OpenMapPage, TakesTheAddressOfARowOfAlaskaAsItIs) {
  BarRig rig;
  conffrm->Combo2.Text = "All Alaska";
  BarRig::list({{"3.1", "noon", "near Nome", "http://alaska.localhost:17650/x y.html", "", "", "10"}});
  EXPECT_EQ(MapPage(), "http://alaska.localhost:17650/x y.html");
}

TEST(OpenMapPage, GoesByTheChosenAreaAndNotByTheRows) {
  RecordProperty("quirk", "links-go-by-the-chosen-area");
  BarRig rig;
  ListLinks("a/1.html", "b/2.html");
  conffrm->Combo2.Text = "All Alaska";
  EXPECT_EQ(MapPage(), "34.495N");
  for (const char *area : {"Intermountain West", "Worldwide 5+", "", "all alaska", "Puerto Rico"}) {
    conffrm->Combo2.Text = area;
    EXPECT_EQ(MapPage(), southern + "/a/1.html") << area;
  }
}

TEST(OpenMapPage, JoinsTheLinkToWhateverTheSharedAddressHolds) {
  RecordProperty("quirk", "link-after-a-whole-address");
  BarRig rig;
  ListLinks("a/1.html", "b/2.html");
  Module1->SiteRoot = los_angeles;
  EXPECT_EQ(MapPage(), los_angeles + "a/1.html");
  EXPECT_EQ(GetLastEventUrl(), los_angeles + "a/1.html");
}

TEST(OpenMapPage, FailsWithoutASelectedRow) {
  BarRig rig;
  BarRig::list({});
  EXPECT_EQ(FailureOf(MapPage), object_not_set);
  rig.click(rig.open_long_bar().Label1(0));
  EXPECT_EQ(rig.trace({"error", "open"}), Lines{"error report 91 Object variable not set"});
}

TEST(GetLastEventUrl, JoinsTheFirstRowsLinkToTheSite) {
  BarRig rig;
  ListLinks("a/1.html", "b/2.html");
  frmRecords->ListView1.ListItems.Choose(2);
  EXPECT_EQ(GetLastEventUrl(), southern + "/a/1.html");
}

TEST(GetLastEventUrl, JoinsTheLinkOfTheRowThatIsFirstWhenSorted) {
  RecordProperty("quirk", "last-event-follows-the-sort");
  ListRig rig;
  ListLinks("newest/1.html", "oldest/2.html");
  rig.click_title(1);
  EXPECT_EQ(GetLastEventUrl(), southern + "/newest/1.html");
  rig.click_title(1);
  EXPECT_EQ(GetLastEventUrl(), southern + "/oldest/2.html");
}

TEST(GetLastEventUrl, IsEmptyForALinkWithoutASlash) {
  BarRig rig;
  for (const char *link : {"1.html", "", "26.5"}) {
    ListLinks(link, "b/2.html");
    EXPECT_EQ(GetLastEventUrl(), "") << link;
  }
  ListLinks("/", "");
  EXPECT_EQ(GetLastEventUrl(), southern + "//");
}

TEST(GetLastEventUrl, IsEmptyForARowOfAlaska) {
  BarRig rig;
  conffrm->Combo2.Text = "All Alaska";
  BarRig::list({{"3.1", "noon", "near Nome", "http://alaska.localhost:17650/x.html", "", "", "10"}});
  EXPECT_EQ(GetLastEventUrl(), "");
}

TEST(GetLastEventUrl, FailsForAnEmptyList) {
  const BarRig rig;
  BarRig::list({});
  EXPECT_EQ(FailureOf(GetLastEventUrl), subscript);
}

// The map.

const std::string map_address = "https://maps.google.com/maps?near=";

TEST(MapLink, HasTheCoordinatesOfTheSelectedRowAsTheyAreOnThePage) {
  ListRig rig;
  std::vector<std::string> second = BarRig::row("1.0", "Far");
  second[3] = " 34.1N";
  second[4] = "0118.20W";
  BarRig::list({BarRig::row("2.0", "Near"), second});
  EXPECT_EQ(rig.click_entry(frmRecords->mnuMapGoo), Lines{"open " + map_address + "34.495N,118.667W for frmRecords"});
  ListRig::events().ListItems.Choose(2);
  EXPECT_EQ(rig.click_entry(frmRecords->mnuMapGoo), Lines{"open " + map_address + " 34.1N,0118.20W for frmRecords"});
}

TEST(MapLink, EscapesNothing) {
  RecordProperty("quirk", "links-are-not-escaped");
  ListRig rig;
  std::vector<std::string> row = BarRig::row("2.0", "Near");
  row[3] = "a&b=#c";
  row[4] = "%41 \xE9\n";
  BarRig::list({row});
  EXPECT_EQ(MapAddress(), map_address + "a&b=#c,%41 \xE9\n");
  BarRig::list({{""}});
  EXPECT_EQ(MapAddress(), map_address + ",");
}

TEST(MapLink, FetchesThePageOfARegionsRowOnceAndFillsTheRow) {
  ListRig rig;
  rig.list_alaska();
  const std::string opened = "open " + map_address + "64.5,-165.4 for frmRecords";
  EXPECT_EQ(rig.click_entry(frmRecords->mnuMapGoo), (Lines{"request " + nome_page, opened}));
  EXPECT_EQ(ListRig::sub_item(1, 4), "64.5");
  EXPECT_EQ(ListRig::sub_item(1, 5), "-165.4");
  EXPECT_EQ(ListRig::sub_item(1, 6), "") << "only a click on the row reads the depth";
  EXPECT_EQ(rig.click_entry(frmRecords->mnuMapGoo), Lines{opened});
}

TEST(MapLink, ShowsTheFilledCoordinatesOfARegionsRowAsNumbers) {
  ListRig rig;
  rig.list_alaska();
  ListRig::events().ListItems.Choose(2);
  EXPECT_EQ(rig.click_entry(frmRecords->mnuMapGoo), Lines{"open " + map_address + "51.8,-176.6 for frmRecords"});
  ListRig::events().ListItems.SetSubItem(2, 4, "x");
  ListRig::events().ListItems.SetSubItem(2, 5, "");
  EXPECT_EQ(rig.click_entry(frmRecords->mnuMapGoo), Lines{"open " + map_address + "0,0 for frmRecords"});
  ListRig::events().ListItems.SetSubItem(2, 4, "");
  EXPECT_EQ(rig.click_entry(frmRecords->mnuMapGoo)[0], "request " + adak_page) << "the latitude decides";
}

TEST(MapLink, HasTheRegionsDecimalSeparator) {
  ListRig rig;
  rig.list_alaska();
  rig.region().SetDecimalSeparator(',');
  rig.click(frmRecords->mnuMapGoo);
  EXPECT_EQ(rig.trace({"open"}), Lines{"open " + map_address + "64,5,-165,4 for frmRecords"});
}

TEST(MapLink, GoesByTheChosenAreaAndNotByTheRows) {
  ListRig rig;
  conffrm->Combo2.Text = "All Alaska";
  EXPECT_EQ(rig.click_entry(frmRecords->mnuMapGoo), Lines{"open " + map_address + "118.667,26.5 for frmRecords"});
}

TEST(MapLink, EndsTheProgramWithoutThePageOfARegionsRow) {
  for (const char *page : {"", "Not found", "<html>"}) {
    ListRig rig;
    rig.list_alaska();
    rig.serve(nome_page, page);
    EXPECT_EQ(rig.click_entry(frmRecords->mnuMapGoo),
              (Lines{"request " + nome_page, "error report 5 Invalid procedure call or argument"}));
    EXPECT_EQ(rig.end_status(), 1);
    EXPECT_EQ(ListRig::sub_item(1, 4), "");
  }
}

// The entries of both menus.

TEST(ListEntries, OfAListWithoutASelectedRowEndTheProgram) {
  RecordProperty("quirk", "menu-of-an-emptied-list-ends-the-program");
  for (const char *area : {"Los Angeles", "All Alaska"}) {
    for (const bool has_rows : {true, false}) {
      for (const int number : {0, 1}) {
        ListRig rig;
        conffrm->Combo2.Text = area;
        if (has_rows)
          ListRig::events().ListItems.Choose(0);
        else
          BarRig::list({});
        MenuItem &entry = number == 0 ? frmRecords->mnuMapGoo : frmRecords->mnuOpenMap;
        EXPECT_EQ(rig.click_entry(entry), Lines{"error report 91 Object variable not set"}) << area << has_rows;
        EXPECT_EQ(rig.end_status(), 1);
      }
    }
  }
}

TEST(ListEntries, OpenThePageOfTheSelectedRow) {
  ListRig rig;
  ListLinks("a/1.html", "b 2.html");
  EXPECT_EQ(rig.click_entry(frmRecords->mnuOpenMap), Lines{"open " + southern + "/a/1.html for frmRecords"});
  ListRig::events().ListItems.Choose(2);
  EXPECT_EQ(rig.click_entry(frmRecords->mnuOpenMap), Lines{"open " + southern + "/b 2.html for frmRecords"});
  rig.list_alaska();
  EXPECT_EQ(rig.click_entry(frmRecords->mnuOpenMap), Lines{"open " + nome_page + " for frmRecords"});
}

TEST(ListEntries, OpenAnAddressThatLeadsNowhereAfterAClickOnThePopup) {
  RecordProperty("quirk", "link-after-a-whole-address");
  ListRig rig;
  ListLinks("a/1.html", "b/2.html");
  rig.click(frmQalert->Label1);
  EXPECT_EQ(rig.click_entry(frmRecords->mnuOpenMap), Lines{"open " + los_angeles + "a/1.html for frmRecords"});
  rig.refresh();
  ListLinks("a/1.html", "b/2.html");
  EXPECT_EQ(rig.click_entry(frmRecords->mnuOpenMap), Lines{"open " + southern + "/a/1.html for frmRecords"});
}

void SetHeadline(const std::string &place) {
  frmRecords->Label3.Caption = "Mag: 5.2  Where: " + place + "  Time: 01:26:13";
}

TEST(HeadlineMenu, IsShownByTheRightButtonAlone) {
  ListRig rig;
  for (const int button : {0, 1, 3, 4})
    rig.release_mouse_on(frmRecords->Label3, button);
  EXPECT_EQ(rig.trace(), Lines{});
  rig.release_mouse_on(frmRecords->Label3, 2);
  EXPECT_EQ(rig.trace(), Lines{"popup TmnuGlobal of frmRecords"});
}

TEST(HeadlineMenu, OpensTheEventsPageByTheTagAsItIs) {
  ListRig rig;
  for (const std::string tag : {"http://national.localhost:17650/recenteqs/Quakes/us1.html", "", "x y", "N/A"}) {
    frmRecords->Label3.Tag = tag;
    EXPECT_EQ(rig.click_entry(frmRecords->mnuGlobalInfo), Lines{"open " + tag + " for frmRecords"});
  }
}

TEST(HeadlineMenu, LooksThePlaceUpInTheEncyclopediaAndOnTheWeb) {
  ListRig rig;
  SetHeadline("NEAR THE COAST");
  EXPECT_EQ(rig.click_entry(frmRecords->mnuWiki),
            Lines{"open https://en.wikipedia.org/wiki/Special:Search/NEAR THE COAST for frmRecords"});
  EXPECT_EQ(rig.click_entry(frmRecords->mnuwikipassGoogle),
            Lines{"open https://www.google.com/search?q=NEAR THE COAST%2Bsite:en.wikipedia.org for frmRecords"});
  SetHeadline("Ca\xF1on & co #1?");
  EXPECT_EQ(rig.click_entry(frmRecords->mnuWiki),
            Lines{"open https://en.wikipedia.org/wiki/Special:Search/Ca\xF1on & co #1? for frmRecords"});
}

TEST(HeadlineMenu, LooksUpThePlaceOfTheNewestEventOfTheWorld) {
  ListRig rig;
  EXPECT_EQ(EncyclopediaAddress(), "https://en.wikipedia.org/wiki/Special:Search/19 km S of Jaco, Costa Rica");
}

TEST(HeadlineMenu, EndsTheProgramWithoutAHeadline) {
  RecordProperty("quirk", "wiki-without-headline-ends-the-program");
  for (const int number : {0, 1}) {
    Rig rig;
    rig.start();
    EXPECT_EQ(frmRecords->Label3.Caption(), "N/A");
    rig.click(number == 0 ? frmRecords->mnuWiki : frmRecords->mnuwikipassGoogle);
    EXPECT_EQ(rig.trace({"open", "error"}), Lines{"error report 5 Invalid procedure call or argument"});
    EXPECT_EQ(rig.end_status(), 1);
  }
}

TEST(HeadlineMenu, OpensAnEmptyAddressWithoutAHeadline) {
  Rig rig;
  rig.start();
  rig.click(frmRecords->mnuGlobalInfo);
  EXPECT_EQ(rig.trace({"open", "error"}), Lines{"open  for frmRecords"});
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(Links, GoToTheHostsThatAreStored) {
  ListRig rig;
  rig.store().Put(hosts_key, "Maps", "https://maps.example");
  rig.store().Put(hosts_key, "Encyclopedia", "wiki.example:8080");
  rig.store().Put(hosts_key, "WebSearch", "http://search.example");
  SetHeadline("Fiji");
  EXPECT_EQ(MapAddress(), "https://maps.example/maps?near=34.495N,118.667W");
  EXPECT_EQ(EncyclopediaAddress(), "http://wiki.example:8080/wiki/Special:Search/Fiji");
  EXPECT_EQ(WebSearchAddress(), "http://search.example/search?q=Fiji%2Bsite:wiki.example");
}

// The place in the headline.

std::string PlaceIn(const std::string &headline) {
  frmRecords->Label3.Caption = headline;
  return HeadlinePlace();
}

TEST(HeadlinePlace, IsTheTextBetweenWhereAndTime) {
  Rig rig;
  EXPECT_EQ(PlaceIn("Mag: 5.2  Where: NEAR THE COAST  Time: 01:26:13"), "NEAR THE COAST");
  EXPECT_EQ(PlaceIn("Mag: 5.2  Where:    Fiji     Time: 01:26:13"), "Fiji");
  EXPECT_EQ(PlaceIn("Mag:   Where:   Time: "), "");
}

TEST(HeadlinePlace, KeepsItsColons) {
  Rig rig;
  EXPECT_EQ(PlaceIn("Mag: 5.2  Where: Fiji: north: 3 km  Time: 01:26:13"), "Fiji: north: 3 km");
}

TEST(HeadlinePlace, EndsBeforeItsOwnTimeWithoutTheCharacterInFrontOfIt) {
  RecordProperty("quirk", "place-ends-before-time");
  Rig rig;
  EXPECT_EQ(PlaceIn("Mag: 5.2  Where: Near the Timeball  Time: 01:26:13"), "Near the");
  EXPECT_EQ(PlaceIn("Mag: 5.2  Where: Near xTime  Time: 01:26:13"), "Near");
  EXPECT_EQ(PlaceIn("Mag: 5.2  Where: some time ago  Time: 01:26:13"), "some time ago") << "case counts";
}

TEST(HeadlinePlace, BeginsAfterTheFirstColonFromTheFifthCharacterOn) {
  Rig rig;
  EXPECT_EQ(PlaceIn("Mag: 5:2  Where: Fiji  Time: 01:26:13"), "2  Where: Fiji");
  EXPECT_EQ(PlaceIn("Mag::Fiji  Time"), "Fiji");
  EXPECT_EQ(PlaceIn("Mag:Fiji  Time"), "Mag:Fiji") << "without a further colon from the first character";
}

TEST(HeadlinePlace, FailsWhereThereIsNoTime) {
  Rig rig;
  for (const char *headline : {"N/A", "", "Mag: 5.2  Where: Fiji", "Mag: 5.2  Where: Fiji  time: ", "Time"})
    EXPECT_EQ(FailureOf([&] { PlaceIn(headline); }), invalid_argument) << headline;
}

TEST(HeadlinePlace, OverflowsBeyondSixteenBits) {
  Rig rig;
  const std::string begin = "Mag: 5.2  Where: ";
  const std::string longest(32767 - begin.size() - 1, 'x');
  EXPECT_EQ(PlaceIn(begin + longest + "Time").size(), longest.size() - 1);
  EXPECT_EQ(FailureOf([&] { PlaceIn(begin + longest + " Time"); }), overflow);
  EXPECT_EQ(FailureOf([&] { PlaceIn(std::string(32766, ' ') + ":Time"); }), overflow);
}

// The help and the log.

TEST(HelpLink, OpensTheHelpBesideTheProgram) {
  ListRig rig;
  rig.process().folder = "/home/u/bor vane/bin";
  EXPECT_EQ(rig.click_entry(frmRecords->Label7), Lines{"open-file /home/u/bor vane/bin/help.html for frmRecords"})
      << "also while there is none";
  rig.files().Put("/home/u/bor vane/bin/help.html", "help");
  rig.files().Put("/home/u/bor vane/share/borvane/help.html", "help");
  EXPECT_EQ(rig.click_entry(frmRecords->Label7), Lines{"open-file /home/u/bor vane/bin/help.html for frmRecords"});
}

TEST(HelpLink, OpensTheHelpOfAnInstalledProgram) {
  ListRig rig;
  for (const std::string prefix : {"/usr", "", "/home/u/\xFF"}) {
    rig.process().folder = prefix + "/bin";
    rig.files().Put(prefix + "/share/borvane/help.html", "help");
    EXPECT_EQ(rig.click_entry(frmRecords->Label7),
              Lines{"open-file " + prefix + "/share/borvane/help.html for frmRecords"});
  }
}

TEST(HelpLink, IsThatOfF1) {
  ListRig rig;
  rig.clear_trace();
  rig.key(*frmRecords, 112);
  EXPECT_EQ(rig.trace({"open-file"}), Lines{"open-file /programs/help.html for frmRecords"});
}

}  // namespace
}  // namespace borvane
