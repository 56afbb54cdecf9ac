#include <gtest/gtest.h>

#include "scan/scanners.h"
#include "support/failure_of.h"
#include "support/program/page_rig.h"

namespace borvane {
namespace {

/// Scans a page in a program of its own.
struct ScanRig : PageRig {
  explicit ScanRig(std::string text) : PageRig(ScanMapList, std::move(text)) {}
};

using Texts = std::vector<std::string>;

const Texts small_row = {"1.1",
                         "2018/02/06",
                         "08:56:44",
                         "37.456N",
                         "113.088W",
                         "11.1",
                         "24 km S of Cedar City, UT",
                         "recenteqs/Quakes/uu60267087.html"};
const Texts capital_row = {"3.2",
                           "2018/02/05",
                           "01:11:54",
                           "38.444N",
                           "113.096W",
                           "0.9",
                           "9 km NW of Milford, UT",
                           "recenteqs/Quakes/uu60267017.html"};

TEST(ScanMapList, ReadsRowsOfBothForms) {
  const ScanRig rig(MapPage(MapRow() + CapitalMapRow() + MapRow()));
  EXPECT_EQ(rig.failure, 0);
  ASSERT_EQ(Rows(), 3);
  EXPECT_EQ(RowTexts(1), small_row);
  EXPECT_EQ(RowTexts(2), capital_row);
  EXPECT_EQ(RowTexts(3), small_row);
}

TEST(ScanMapList, LeavesInThePageWhatItHasNotCut) {
  const ScanRig rig(MapPage(MapRow()));
  EXPECT_EQ(rig.page, "<A HREF=\"/recenteqs/index.html\">MAP</A></PRE>\n");
}

TEST(ScanMapList, EndsWithItsLastSmallMarkerWhateverCapitalOnesFollow) {
  RecordProperty("quirk", "map-list-ends-with-its-last-small-marker");
  const ScanRig rig(MapPage(MapRow() + CapitalMapRow() + CapitalMapRow()));
  EXPECT_EQ(rig.failure, 0);
  EXPECT_EQ(Rows(), 1);
  const ScanRig only_capital(MapPage(CapitalMapRow() + CapitalMapRow()));
  EXPECT_EQ(only_capital.failure, 0);
  EXPECT_EQ(Rows(), 0);
}

TEST(ScanMapList, FailsInRowsOfTheSmallFormAfterTheLastOfTheOther) {
  RecordProperty("quirk", "missing-capital-marker-counts-as-position-zero");
  const ScanRig rig("<PRE>\n" + CapitalMapRow() + MapRow() + MapRow() + "</PRE>\n");
  EXPECT_EQ(rig.failure, invalid_argument) << "the row is read from the first \">\" in front of its marker";
  EXPECT_EQ(Rows(), 1);
  const ScanRig without("<PRE>\n" + MapRow() + "</PRE>\n");
  EXPECT_EQ(without.failure, invalid_argument);
  EXPECT_EQ(Rows(), 0);
}

TEST(ScanMapList, FailsWhereTheNextCapitalMarkerLiesBeyondSixteenBits) {
  RecordProperty("quirk", "far-capital-marker-fails-the-map-list");
  std::string rows;
  for (int row = 0; row < 400; ++row)
    rows += MapRow();
  const ScanRig rig(MapPage(rows));
  EXPECT_EQ(rig.failure, overflow) << "although each row is near the start of what is left";
  EXPECT_EQ(Rows(), 0);
}

TEST(ScanMapList, LeavesOutTheCharacterInFrontOfThePlacesTag) {
  RecordProperty("quirk", "map-list-place-loses-its-last-character");
  for (const auto &[end, place] : std::initializer_list<std::pair<const char *, const char *>>{
           {" <BR>", "Milford, UT"}, {"<BR>", "Milford, U"}, {".<BR>", "Milford, UT"}, {"  <BR>", "Milford, UT"}}) {
    const ScanRig rig("<P>>MAP</A><B> 3.2  <A HREF=\"/x\">d t la lo 5</A> Milford, UT" + std::string(end) + ">map</A>");
    ASSERT_EQ(Rows(), 1) << end;
    EXPECT_EQ(SubItem(1, 6), place) << end;
  }
}

TEST(ScanMapList, SkipsTheTagsOfLinkDepthAndPlaceByTheirLength) {
  RecordProperty("quirk", "tags-are-skipped-by-their-length");
  const auto texts_with = [](std::string_view head, std::string_view tag_of_depth, std::string_view tag_of_place) {
    const ScanRig rig(">MAP</A>map</A> 3.2  " + std::string(head) + "/x.html\">d t la lo 5" +
                      std::string(tag_of_depth) + " Milford " + std::string(tag_of_place) + "-end");
    return Rows() == 1 ? Texts{SubItem(1, 7), SubItem(1, 6), rig.page} : Texts();
  };
  EXPECT_EQ(texts_with("<A HREF=\"", "</A>", "<BR>"), (Texts{"x.html", "Milford", "end"}));
  EXPECT_EQ(texts_with("<A  HREF=\"", "</A>", "<BR>"), (Texts{"/x.html", "Milford", "end"}));
  EXPECT_EQ(texts_with("<AHREF=\"", "</A>", "<BR>"), (Texts{".html", "Milford", "end"}));
  EXPECT_EQ(texts_with("<A HREF=\"", "</SUP>", "<BR>"), (Texts{"x.html", "> Milford", "end"}));
  EXPECT_EQ(texts_with("<A HREF=\"", "<I>", "<BR>"), (Texts{"x.html", "ilford", "end"}));
  EXPECT_EQ(texts_with("<A HREF=\"", "</A>", "</SUP>"), (Texts{"x.html", "Milford", ">-end"}));
}

TEST(ScanMapList, ShiftsTheFieldsAfterTwoBlanks) {
  RecordProperty("quirk", "two-blanks-shift-the-fields");
  std::string row = MapRow();
  row.insert(row.find(" 08:56:44"), " ");
  const ScanRig rig(MapPage(row + MapRow()));
  ASSERT_EQ(Rows(), 2);
  EXPECT_EQ(RowTexts(1), (Texts{"1.1", "2018/02/06", "", "08:56:44", "37.456N", "113.088W 11.1",
                                "24 km S of Cedar City, UT", "recenteqs/Quakes/uu60267087.html"}));
  EXPECT_EQ(RowTexts(2), small_row) << "the next row is whole";
}

/// The positions in one row: how far each searched mark is from the start of the text at that moment.
struct Distances {
  int magnitude = 4;  // the "<" after it
  int link = 15;      // the ">" after it
  int token = 3;      // the blank after each of the four
  int depth = 3;      // the "<" after it
  int place = 8;      // the "<" after it
};

/// A page of one row with these distances. Its two markers share a character.
std::string PageWith(const Distances &at) {
  std::string page = ">MAP</A>map</A>." + AtPosition(at.magnitude, "<", '7') + AtPosition(at.link, ">", 'l');
  for (int token = 0; token < 4; ++token)
    page += AtPosition(at.token, " ", 't');
  return page + AtPosition(at.depth, "</A>.", '5') + AtPosition(at.place, "<", 'p');
}

/// "ok", or the number of the failure that keeps a row with these distances from being read.
std::string EndOf(const Distances &at) {
  const ScanRig rig(PageWith(at));
  return Rows() == 1 ? "ok" : std::to_string(rig.failure);
}

TEST(ScanMapList, OverflowsWhereAPositionOrASumMadeFromItDoesNotFitSixteenBits) {
  EXPECT_EQ(EndOf({}), "ok");
  EXPECT_EQ(EndOf({.magnitude = 32766}), "ok");
  EXPECT_EQ(EndOf({.magnitude = 32767}), "6") << "the cut after the magnitude";
  EXPECT_EQ(EndOf({.link = 32767}), "ok") << "the cut is made by the link's length";
  EXPECT_EQ(EndOf({.link = 32768}), "6") << "the link's end";
  EXPECT_EQ(EndOf({.link = 11}), "ok") << "an empty link";
  EXPECT_EQ(EndOf({.link = 10}), "5") << "the link has no room";
  EXPECT_EQ(EndOf({.token = 32766}), "ok");
  EXPECT_EQ(EndOf({.token = 32767}), "6") << "the cut after a token";
  EXPECT_EQ(EndOf({.depth = 32762}), "ok");
  EXPECT_EQ(EndOf({.depth = 32763}), "6") << "the cut after the depth";
  EXPECT_EQ(EndOf({.place = 2}), "ok") << "an empty place";
  EXPECT_EQ(EndOf({.place = 1}), "5") << "the place has no room";
  EXPECT_EQ(EndOf({.place = 32762}), "ok");
  EXPECT_EQ(EndOf({.place = 32763}), "6") << "the cut after the place";
}

TEST(ScanMapList, OverflowsWhereItsMarkersLieBeyondSixteenBits) {
  const std::string row = "<B> 3.2<A HREF=\"/x\">d t la lo 5</A>.place.<BR>.";
  for (const auto &[small_marker, rows] : std::initializer_list<std::pair<int, int>>{{32767, 1}, {32768, 0}}) {
    std::string page = ">MAP</A>" + row;
    page.resize(static_cast<std::size_t>(small_marker) - 1, '.');
    const ScanRig rig(page + ">map</A>");
    EXPECT_EQ(Rows(), rows) << small_marker;
    EXPECT_EQ(rig.failure, rows == 1 ? invalid_argument : overflow) << "no capital marker is left for a second row";
  }
  for (const auto &[capital_marker, rows] : std::initializer_list<std::pair<int, int>>{{32767, 1}, {32768, 0}}) {
    std::string page = ">map</A>" + row.substr(3);
    page.resize(static_cast<std::size_t>(capital_marker) - 1, '.');
    const ScanRig rig(page + ">MAP</A>");
    EXPECT_EQ(Rows(), rows) << capital_marker;
    EXPECT_EQ(rig.failure, rows == 1 ? 0 : overflow);
  }
}

TEST(ScanMapList, OverflowsWhereTheRowWouldBeginBeyondSixteenBits) {
  for (const auto &[small_marker, failure] :
       std::initializer_list<std::pair<int, int>>{{32765, invalid_argument}, {32766, overflow}, {32767, overflow}}) {
    std::string page = ">MAP</A>";
    page.resize(static_cast<std::size_t>(small_marker) - 1, '.');
    const ScanRig rig(page + ">map</A>");
    EXPECT_EQ(rig.failure, failure) << small_marker << ": the row begins two characters after the small marker's \">\"";
  }
}

}  // namespace
}  // namespace borvane
