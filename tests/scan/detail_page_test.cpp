#include "scan/detail_page.h"

#include <gtest/gtest.h>

#include "basic/number.h"
#include "support/failure_of.h"
#include "support/plain_scanners.h"
#include "support/program/page_rig.h"

namespace borvane {
namespace {

const std::string event_page = "http://alaska.localhost:17650/recenteqs_sub/Quakes/ak18384056.html";

/// A started program whose list has two rows of a region's table.
struct DetailRig : Rig {
  DetailRig() {
    start();
    for (const char *magnitude : {"3.8", "3.2"})
      frmRecords->ListView1.ListItems.Add({.Text = magnitude, .SubItemTexts = {"date", "place", event_page}});
    clear_trace();
  }

  float latitude = 1;
  float longitude = 2;

  /// Reads the coordinates and returns the number of the failure.
  int scan(const std::string &page, int mode = read_coordinates) {
    return FailureOf([&] { ScanLatLon(page, mode, latitude, longitude); });
  }
};

// FetchDetailPage.

TEST(FetchDetailPage, FetchesThePageWhenTheClientIsFree) {
  Rig rig;
  rig.start();
  rig.serve(event_page, "text");
  rig.clear_trace();
  std::string page;
  rig.happen([&] { page = FetchDetailPage(event_page); });
  EXPECT_EQ(page, "text");
  EXPECT_EQ(rig.trace(), (Lines{"pump in", "pump out", "request " + event_page, "wait in", "wait out"}));
}

TEST(FetchDetailPage, ReturnsNothingWhenTheFetchFails) {
  Rig rig;
  rig.start();
  std::string page = "before";
  rig.happen([&] { page = FetchDetailPage(event_page); });
  EXPECT_EQ(page, "");
  rig.hold(event_page);
  page = "before";
  rig.happen([&] { page = FetchDetailPage(event_page); });
  EXPECT_EQ(page, "") << "after the time-out";
  EXPECT_EQ(rig.end_status(), std::nullopt);
  EXPECT_TRUE(rig.trace({"message", "error"}).empty());
}

TEST(FetchDetailPage, ReturnsNothingWhenTheClientIsBusy) {
  WatchingRig rig;
  rig.serve(event_page, "text");
  rig.hold_stubbornly(los_angeles);
  std::string page = "before";
  rig.during_request(los_angeles, [&] {
    rig.clear_trace();
    page = FetchDetailPage(event_page);
    EXPECT_TRUE(rig.trace({"request"}).empty());
  });
  rig.refresh();
  EXPECT_EQ(page, "");
}

TEST(FetchDetailPage, EndsARefreshThatIsUnderWay) {
  WatchingRig rig;
  rig.serve(event_page, "text");
  rig.hold(los_angeles);
  std::string page;
  rig.during_request(los_angeles, [&] { page = FetchDetailPage(event_page); });
  rig.refresh();
  EXPECT_EQ(page, "text");
  EXPECT_EQ(Module1->RefreshCount, 700) << "the refresh has failed";
}

TEST(FetchDetailPage, DoesNotTrapAForeignException) {
  Rig rig;
  rig.start();
  rig.http().Break(event_page);
  rig.happen([] { FetchDetailPage(event_page); });
  EXPECT_EQ(rig.trace({"error", "end"}), (Lines{"error report 0 broken", "end 1"}));
}

// ScanLatLon.

TEST(ScanLatLon, WritesBothNumbersIntoTheSelectedRow) {
  DetailRig rig;
  frmRecords->ListView1.ListItems.Choose(2);
  EXPECT_EQ(rig.scan(EventPageText("61.726", "-149.9")), 0);
  EXPECT_EQ(rig.latitude, 61.726F);
  EXPECT_EQ(rig.longitude, -149.9F);
  EXPECT_EQ(RowTexts(2), (std::vector<std::string>{"3.2", "date", "place", event_page, "61.726", "-149.9", "", ""}));
  EXPECT_EQ(SubItem(1, 4), "");
}

TEST(ScanLatLon, WritesANumberInItsShortestForm) {
  for (const auto &[text, shown] :
       std::initializer_list<std::pair<const char *, const char *>>{{"61.20", "61.2"},
                                                                    {"+61.0", "61"},
                                                                    {"-0.50", "-0.5"},
                                                                    {".5", "0.5"},
                                                                    {" 61.2N", "61.2"},
                                                                    {"61.2 N", "61.2"},
                                                                    {"61.7262345678", "61.72623"},
                                                                    {"N61.2", "0"},
                                                                    {"", "0"},
                                                                    {"unknown", "0"}}) {
    DetailRig rig;
    EXPECT_EQ(rig.scan(EventPageText(text, text)), 0) << text;
    EXPECT_EQ(SubItem(1, 4), shown) << text;
    EXPECT_EQ(SubItem(1, 5), shown) << text;
  }
}

TEST(ScanLatLon, DoesNothingInAnyOtherMode) {
  for (const int mode : {0, 2, 3, -1}) {
    DetailRig rig;
    EXPECT_EQ(rig.scan(EventPageText(), mode), 0) << mode;
    EXPECT_EQ(rig.scan("", mode), 0) << mode;
    EXPECT_EQ(rig.latitude, 1) << mode;
    EXPECT_EQ(rig.longitude, 2) << mode;
    EXPECT_EQ(SubItem(1, 4), "") << mode;
  }
}

TEST(ScanLatLon, TakesWhatIsAtAFixedDistanceFromTheLabel) {
  RecordProperty("quirk", "event-page-value-at-a-fixed-distance");
  for (const auto &[between, shown] : std::initializer_list<std::pair<const char *, const char *>>{
           {"</dt> <dd>", "61.726"}, {"</dt><dd>", "1.726"}, {"</dt>  <dd>", "0"}, {"</th> <td>", "61.726"}}) {
    DetailRig rig;
    const std::string page = "Latitude:" + std::string(between) + "61.726</dd>Longitude:" + between + "61.726</dd>";
    EXPECT_EQ(rig.scan(page), 0) << between;
    EXPECT_EQ(SubItem(1, 4), shown) << between;
    EXPECT_EQ(SubItem(1, 5), shown) << between;
  }
}

TEST(ScanLatLon, ReadsTheTextAtTheDistanceFromTheStartOfAPageWithoutALabel) {
  DetailRig rig;
  EXPECT_EQ(rig.scan(AtPosition(19, "12.5</dd>")), 0);
  EXPECT_EQ(SubItem(1, 4), "12.5") << "a missing label counts as position 0";
  EXPECT_EQ(SubItem(1, 5), "2.5") << "the longitude is taken from one character further";
  DetailRig other_case;
  EXPECT_EQ(other_case.scan("latitude:</dt> <dd>61.726</dd>"), 0) << "labels are searched for in their exact letters";
  EXPECT_EQ(SubItem(1, 4), "0");
}

TEST(ScanLatLon, EndsTheProgramForAPageWithoutAnEndOfAValue) {
  RecordProperty("quirk", "event-page-without-values-ends-the-program");
  for (const std::string &page : {std::string(), std::string("<html>"), std::string("Latitude:</dt> <dd>61.726"),
                                  std::string("Latitude:</dt> <dd>61.726</dd>Longitude:</dt> <dd>-149.9")}) {
    DetailRig rig;
    rig.happen([&] {
      float latitude = 0;
      float longitude = 0;
      ScanLatLon(page, read_coordinates, latitude, longitude);
    });
    EXPECT_EQ(rig.end_status(), 1) << page;
    EXPECT_TRUE(rig.trace({"error"}).at(0).starts_with("error report 5 ")) << page;
    EXPECT_EQ(SubItem(1, 4), "") << "neither is written before both are read";
  }
}

TEST(ScanLatLon, SetsTheLatitudeBeforeAMissingLongitudeFails) {
  DetailRig rig;
  EXPECT_EQ(rig.scan("Latitude:</dt> <dd>61.5</dd>Longitude:</dt> <dd>1"), invalid_argument);
  EXPECT_EQ(rig.latitude, 61.5F);
  EXPECT_EQ(rig.longitude, 2);
}

TEST(ScanLatLon, FailsWithoutASelectedRowAfterItHasRead) {
  DetailRig rig;
  frmRecords->ListView1.ListItems.Clear();
  EXPECT_EQ(rig.scan(EventPageText("61.5", "-149.5")), object_not_set);
  EXPECT_EQ(rig.latitude, 61.5F);
  EXPECT_EQ(rig.longitude, -149.5F);
}

TEST(ScanLatLon, OverflowsBeyondSinglePrecision) {
  DetailRig rig;
  EXPECT_EQ(rig.scan(EventPageText("1e39")), overflow);
  EXPECT_EQ(rig.scan(EventPageText("61.5", "1e39")), overflow);
  EXPECT_EQ(SubItem(1, 4), "");
}

TEST(ScanLatLon, OverflowsWhereAPositionDoesNotFitSixteenBits) {
  RecordProperty("quirk", "event-page-beyond-sixteen-bits");
  const std::string both = "Latitude:</dt> <dd>6</dd>Longitude:</dt> <dd>1</dd>";
  for (const auto &[label, failure] : std::initializer_list<std::pair<int, int>>{
           {32721, 0}, {32722, overflow}, {32748, overflow}, {40000, overflow}}) {
    DetailRig rig;
    EXPECT_EQ(rig.scan(AtPosition(label, both)), failure) << label;
  }
}

TEST(ScanLatLon, WritesIntoTheRowThatIsSelectedWhenThePageHasCome) {
  RecordProperty("quirk", "coordinates-go-to-the-row-selected-then");
  DetailRig rig;
  rig.serve(event_page, EventPageText());
  rig.during_request(event_page, [] { frmRecords->ListView1.ListItems.Choose(2); });
  rig.happen([&] { rig.scan(FetchDetailPage(event_page)); });
  EXPECT_EQ(SubItem(1, 4), "");
  EXPECT_EQ(SubItem(2, 4), "61.726");
}

TEST(ScanLatLon, WritesTheRegionsDecimalSeparator) {
  RecordProperty("quirk", "region-coordinates-follow-the-region");
  DetailRig rig;
  rig.region().SetDecimalSeparator(',');
  EXPECT_EQ(rig.scan(EventPageText("61.726", "-149.9")), 0);
  EXPECT_EQ(SubItem(1, 4), "61,726");
  EXPECT_EQ(SubItem(1, 5), "-149,9");
  EXPECT_EQ(SinglePrefix(SubItem(1, 4)), 61.0F) << "it is read back up to the comma";
}

// ScanDepth.

TEST(ScanDepth, ReturnsTheTextAsItIs) {
  for (const char *depth : {"35.0 km", " 35.0 ", "", "unknown", "35,0"})
    EXPECT_EQ(ScanDepth(EventPageText("61.2", "-149.9", depth)), depth);
  EXPECT_EQ(ScanDepth("Depth:</dt> <dd>1|2\n3\r<"), "1|2\n3\r");
}

TEST(ScanDepth, IsTakenFromAFixedDistance) {
  EXPECT_EQ(ScanDepth("Depth:</dt><dd>35.0</dd>"), "5.0");
  EXPECT_EQ(ScanDepth("Depth:</dt>  <dd>35.0</dd>"), ">35.0");
  EXPECT_EQ(ScanDepth(AtPosition(16, "12.5</dd>")), "12.5") << "a missing label counts as position 0";
}

TEST(ScanDepth, FailsForAPageWithoutAnEndOfTheDepth) {
  for (const char *page : {"", "<html>", "Depth:</dt> <dd>35.0"})
    EXPECT_EQ(FailureOf([&] { ScanDepth(page); }), invalid_argument) << page;
}

TEST(ScanDepth, OverflowsWhereAPositionDoesNotFitSixteenBits) {
  for (const auto &[label, failure] :
       std::initializer_list<std::pair<int, int>>{{32750, 0}, {32751, overflow}, {32768, overflow}})
    EXPECT_EQ(FailureOf([&] { ScanDepth(AtPosition(label, "Depth:</dt> <dd>1</dd>")); }), failure) << label;
}

// Compared with the plain reader.

plain::EventPage Read(DetailRig &rig, const std::string &page) {
  rig.latitude = 0;
  rig.longitude = 0;
  plain::EventPage read;
  read.coordinates_failure = rig.scan(page);
  read.latitude = rig.latitude;
  read.longitude = rig.longitude;
  read.depth_failure = FailureOf([&] { read.depth = ScanDepth(page); });
  return read;
}

TEST(EventPageTwin, AgreesOnAPageCutAnywhereAndWithOneCharacterWrong) {
  DetailRig rig;
  const std::string page = EventPageText();
  for (std::size_t length = 0; length <= page.size(); ++length) {
    EXPECT_EQ(Read(rig, page.substr(0, length)), plain::ReadEventPage(page.substr(0, length))) << length;
    EXPECT_EQ(Read(rig, page.substr(length)), plain::ReadEventPage(page.substr(length))) << length;
  }
  for (std::size_t position = 0; position < page.size(); ++position) {
    for (const char other : {'<', ':', ' ', '7'}) {
      std::string changed = page;
      changed[position] = other;
      EXPECT_EQ(Read(rig, changed), plain::ReadEventPage(changed)) << changed;
      changed = page;
      changed.insert(position, 1, other);
      EXPECT_EQ(Read(rig, changed), plain::ReadEventPage(changed)) << changed;
    }
  }
}

}  // namespace
}  // namespace borvane
