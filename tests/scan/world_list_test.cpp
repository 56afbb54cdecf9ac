#include <gtest/gtest.h>

#include "scan/scanners.h"
#include "support/failure_of.h"
#include "support/program/page_rig.h"

namespace borvane {
namespace {

/// Scans a page in a program of its own.
struct ScanRig : PageRig {
  explicit ScanRig(std::string text) : PageRig(ScanWorldList, std::move(text)) {}
};

using Texts = std::vector<std::string>;

const Texts row = {"4.4",
                   "2018/02/06",
                   "21:39:20",
                   "9.443N",
                   "84.609W",
                   "3.3",
                   "19 km S of Jaco, Costa Rica",
                   "eqcenter/recenteqsww/Quakes/us1000chrt.html"};

/// Scans a page for the headline, in a program of its own.
struct HeadlineRig : Rig {
  explicit HeadlineRig(std::string page) {
    start();
    frmRecords->ListView1.ListItems.Add({"old", {}});
    watch_rows(frmRecords->ListView1, "ListView1");
    watch_rows(frmRecords->ListView2, "ListView2");
    Module1->GlobalScanFlag = flag_true;
    Module1->SiteRoot = "http://site/";
    clear_trace();
    Integer mode = 3;
    happen([&] { failure = FailureOf([&] { ScanWorldList(mode, page); }); });
    rest = page;
  }

  int failure = -1;
  std::string rest;
};

TEST(ScanWorldList, ReadsTheRowsOfAPage) {
  const ScanRig rig(WorldPage(WorldRow() + WorldRow("5.1", "7 km E of Hualian, Taiwan")));
  EXPECT_EQ(rig.failure, 0);
  ASSERT_EQ(Rows(), 2);
  EXPECT_EQ(RowTexts(1), row);
  EXPECT_EQ(frmRecords->ListView1.ListItems(2).Text, "5.1");
  EXPECT_EQ(SubItem(2, 6), "7 km E of Hualian, Taiwan");
}

TEST(ScanWorldList, ReadsMagnitudeAndPlacePlainOrBoldOrBoldAndColored) {
  const std::string place = "19 km S of Jaco, Costa Rica";
  for (const std::string &magnitude_cell : {std::string("4.4"), Bold("4.4"), BoldAndColored("4.4"), Bold(" 4.4 ")}) {
    for (const std::string &place_cell : {place, Bold(place), BoldAndColored(place), Bold(" " + place + " ")}) {
      const ScanRig rig(WorldPage(WorldRow(magnitude_cell, place_cell) + WorldRow()));
      EXPECT_EQ(rig.failure, 0);
      ASSERT_EQ(Rows(), 2) << magnitude_cell << " " << place_cell;
      EXPECT_EQ(RowTexts(1), row) << magnitude_cell << " " << place_cell;
      EXPECT_EQ(RowTexts(2), row) << magnitude_cell << " " << place_cell;
    }
  }
}

TEST(ScanWorldList, TrimsAMagnitudeAndNotAPlainPlace) {
  const ScanRig rig(WorldPage(WorldRow(" 4.4 ", " Jaco ")));
  ASSERT_EQ(Rows(), 1);
  EXPECT_EQ(RowTexts(1)[0], "4.4");
  EXPECT_EQ(SubItem(1, 6), " Jaco ");
}

TEST(ScanWorldList, FillsAnEmptyMagnitudeOrPlaceFromTheNextBoldText) {
  RecordProperty("quirk", "empty-cell-takes-the-next-bold-text");
  const ScanRig from_the_place(WorldPage(WorldRow("", Bold("Jaco")) + WorldRow()));
  ASSERT_EQ(Rows(), 1);
  EXPECT_EQ(RowTexts(1)[0], "Jaco") << "the row's own place";
  EXPECT_EQ(SubItem(1, 6), "19 km S of Jaco, Costa Rica")
      << "that of the next row, with which the rest of the row is filled";

  const ScanRig from_the_next_row(WorldPage(WorldRow("4.4", "") + WorldRow(Bold("5.1"), "Hualian")));
  ASSERT_EQ(Rows(), 2);
  EXPECT_EQ(SubItem(1, 6), "5.1") << "the next row's magnitude";
  EXPECT_EQ(RowTexts(2)[0], "5.1");
  EXPECT_EQ(SubItem(2, 6), "Hualian");
}

TEST(ScanWorldList, SkipsTheTagOfTheColorUnseen) {
  RecordProperty("quirk", "tags-are-skipped-by-their-length");
  for (const auto &[tag, magnitude] :
       std::initializer_list<std::pair<const char *, const char *>>{{"<font color=\"#FF0000\">", "6.1"},
                                                                    {"<font color=\"#FF00000\">", ">6.1"},
                                                                    {"<font color=\"#FF000\">", ".1"}}) {
    const ScanRig rig(WorldPage(WorldRow("<strong>" + std::string(tag) + "6.1</font></strong>")));
    ASSERT_EQ(Rows(), 1) << tag;
    EXPECT_EQ(RowTexts(1)[0], magnitude) << tag;
  }
}

TEST(ScanWorldList, TakesANumberFromAfterTheNextTagOfItsCell) {
  RecordProperty("quirk", "world-list-cells-begin-with-a-tag");
  std::string without = WorldRow();
  without.replace(without.find("<tt> 9.443N </tt>"), 17, "9.443N");
  const ScanRig rig(WorldPage(without));
  ASSERT_EQ(Rows(), 1);
  EXPECT_EQ(SubItem(1, 3), "\n") << "what is between the end of its cell and the next one";
  EXPECT_EQ(SubItem(1, 4), "84.609W");
}

TEST(ScanWorldList, LeavesInThePageWhatItHasNotCut) {
  const ScanRig rig(WorldPage(WorldRow("4.4", "Jaco")));
  EXPECT_EQ(rig.page, "/tt></td>\n<td>Jaco</td></tr>\n</table>\n<p>MAP leads to a map.</p>\n")
      << "nothing is cut after the place";
}

TEST(ScanWorldList, FailsWhereNoFurtherMapFollowsItsLastRow) {
  RecordProperty("quirk", "world-list-without-map-fails");
  const ScanRig rig("<table>" + WorldRow() + WorldRow() + "</table>\n");
  EXPECT_EQ(rig.failure, invalid_argument);
  EXPECT_EQ(Rows(), 2) << "with all its rows";
  const ScanRig empty("");
  EXPECT_EQ(empty.failure, invalid_argument);
}

TEST(ScanWorldList, EndsAsAFailedRefreshWhereNoFurtherMapFollowsItsLastRow) {
  WatchingRig rig;
  conffrm->Combo2.Text = "Worlwide <5";
  rig.serve(world_page, "<table>" + WorldRow() + WorldRow() + "</table>\n");
  rig.refresh();
  EXPECT_EQ(Rows(), 2);
  EXPECT_EQ(Newest(), "4.4");
  EXPECT_EQ(LastRefresh(), "");
  EXPECT_EQ(Module1->RefreshCount, 700);
}

TEST(ScanWorldList, TurnsToTheHeadlineWhenTheFlagIsSetWhileItReads) {
  WatchingRig rig;
  rig.store()["LastBig"] = "9.9";
  conffrm->Combo2.Text = "Worlwide <5";
  rig.serve(world_page, WorldPage(WorldRow("4.4") + WorldRow("5.0") + WorldRow("5.1")));
  rig.random().Add(0);
  // The first row alerts, and events run: a headline fails in them.
  rig.screen().on_load = [&](FormBase &form) {
    if (form.name() == "frmQalert")
      Module1->GlobalScanFlag = flag_true;
  };
  rig.refresh();
  EXPECT_EQ(Rows(), 1);
  EXPECT_EQ(frmRecords->Label3.Caption(), "Mag: 5.0  Where: 19 km S of Jaco, Costa Rica  Time: 21:39:20");
  EXPECT_EQ(Module1->RefreshCount, 0) << "the refresh ends normally";
}

// The headline.

TEST(ScanWorldListForTheHeadline, WritesTheFirstRowIntoTheLabelAlone) {
  HeadlineRig rig(WorldPage(WorldRow() + WorldRow("5.1")));
  EXPECT_EQ(rig.failure, 0);
  EXPECT_EQ(frmRecords->Label3.Caption(), "Mag: 4.4  Where: 19 km S of Jaco, Costa Rica  Time: 21:39:20");
  EXPECT_EQ(frmRecords->Label3.Tag(), "http://site/eqcenter/recenteqsww/Quakes/us1000chrt.html");
  EXPECT_EQ(frmRecords->Label3.ToolTipText(), "Right click for options");
  EXPECT_TRUE(rig.trace({"rows", "read", "write"}).empty()) << "neither the lists nor the strongest event are touched";
  EXPECT_TRUE(rig.rest.starts_with("/tt></td>\n<td>19 km")) << "the second row is not read";
}

TEST(ScanWorldListForTheHeadline, ReadsBoldAndColoredTexts) {
  const HeadlineRig rig(WorldPage(WorldRow(BoldAndColored("6.1"), Bold("Hualian"))));
  EXPECT_EQ(frmRecords->Label3.Caption(), "Mag: 6.1  Where: Hualian  Time: 21:39:20");
}

TEST(ScanWorldListForTheHeadline, LeavesTheLabelOfAPageWithoutACell) {
  const HeadlineRig rig("<p>MAP leads to a map.</p>");
  EXPECT_EQ(rig.failure, 0);
  EXPECT_EQ(frmRecords->Label3.Caption(), "N/A");
  EXPECT_EQ(frmRecords->Label3.Tag(), "");
  EXPECT_EQ(frmRecords->Label3.ToolTipText(), "");
}

TEST(ScanWorldListForTheHeadline, FailsOnAPageWithoutMap) {
  const HeadlineRig rig("<td nowrap>4.4</td>");
  EXPECT_EQ(rig.failure, invalid_argument);
  EXPECT_EQ(frmRecords->Label3.Caption(), "N/A");
}

// Sixteen bits.

/// The positions in one row: how far each searched mark is from the start of the text at that moment.
struct Distances {
  int map = 1;
  int cell = 20;
  int magnitude = 30;  // the "<" after it
  int href = 5;
  int link = 30;         // the ">" after it
  int blank = 5;         // between date and time
  int time = 10;         // the "<" after it
  int number_cell = 20;  // of each of the three numbers
  int number = 35;       // the ">" in front of it
  int number_end = 40;   // the "<" after it
  int place_cell = 10;
  int place = 20;  // the "<" after it
};

/// Fills `text` up to a position and appends `mark` there.
void Put(std::string &text, int position, std::string_view mark) {
  EXPECT_LT(text.size(), static_cast<std::size_t>(position)) << mark;
  text.resize(static_cast<std::size_t>(position) - 1, '.');
  text += mark;
}

/// A page of one row with these distances.
std::string PageWith(const Distances &at) {
  std::string magnitude;
  Put(magnitude, at.map, "MAP");
  Put(magnitude, at.cell, "nowrap>");
  Put(magnitude, at.magnitude, "<");
  std::string link;
  Put(link, at.href, "href=");
  Put(link, at.link, ">");
  std::string first_number;
  Put(first_number, at.blank, " ");
  Put(first_number, at.time, "<");
  std::string numbers;
  for (int number = 0; number < 3; ++number) {
    std::string cell = number == 0 ? first_number : std::string();
    Put(cell, at.number_cell, "nowrap>");
    Put(cell, at.number, ">");
    Put(cell, at.number_end, "<");
    numbers += cell;
  }
  std::string place;
  Put(place, at.place_cell, "<td>");
  Put(place, at.place, "<");
  return magnitude + link + numbers + place;
}

/// "ok", or the number of the failure that keeps a row with these distances from being read.
std::string EndOf(const Distances &at) {
  const ScanRig rig(PageWith(at));
  return Rows() == 1 ? "ok" : std::to_string(rig.failure);
}

TEST(ScanWorldList, OverflowsWhereAPositionOrASumMadeFromItDoesNotFitSixteenBits) {
  EXPECT_EQ(EndOf({}), "ok");
  EXPECT_EQ(EndOf({.map = 32740, .cell = 32750, .magnitude = 32766}), "ok");
  EXPECT_EQ(EndOf({.map = 32768, .cell = 32780, .magnitude = 32790}), "6") << "the marker of a row";
  EXPECT_EQ(EndOf({.cell = 32768, .magnitude = 32780}), "6") << "the cell";
  EXPECT_EQ(EndOf({.cell = 32758, .magnitude = 32766}), "ok");
  EXPECT_EQ(EndOf({.cell = 32758, .magnitude = 32767}), "6") << "the cut after the magnitude";
  EXPECT_EQ(EndOf({.magnitude = 32768}), "6") << "the magnitude's end";
  EXPECT_EQ(EndOf({.href = 32758, .link = 32766}), "ok") << "an empty link";
  EXPECT_EQ(EndOf({.href = 32759, .link = 32766}), "5") << "the link has no room";
  EXPECT_EQ(EndOf({.href = 32761, .link = 32767}), "6") << "the link's start";
  EXPECT_EQ(EndOf({.link = 32767}), "6") << "the cut after the link";
  EXPECT_EQ(EndOf({.link = 32768}), "6") << "the link's end";
}

TEST(ScanWorldList, OverflowsWhereATimeOrANumberDoesNotFitSixteenBits) {
  const auto with_time = [](int blank, int time) {
    return EndOf({.blank = blank, .time = time, .number_cell = 32769, .number = 32780, .number_end = 32790});
  };
  EXPECT_EQ(with_time(32767, 32768), "6") << "the time's start or end";
  EXPECT_EQ(with_time(32766, 32768), "6") << "the time's end";
  EXPECT_EQ(with_time(32766, 32767), "6") << "the next cell";
  EXPECT_EQ(EndOf({.number_cell = 32700, .number = 32765, .number_end = 32766}), "ok");
  EXPECT_EQ(EndOf({.number_cell = 32700, .number = 32765, .number_end = 32767}), "6") << "the cut after the number";
  EXPECT_EQ(EndOf({.number_cell = 32700, .number = 32767, .number_end = 32768}), "6") << "the number's start or end";
  EXPECT_EQ(EndOf({.number_cell = 32700, .number = 32768, .number_end = 32769}), "6") << "the \">\" in front of it";
}

TEST(ScanWorldList, OverflowsWhereThePlaceDoesNotFitSixteenBits) {
  EXPECT_EQ(EndOf({.place_cell = 32761, .place = 32767}), "ok");
  EXPECT_EQ(EndOf({.place_cell = 32764, .place = 32770}), "6") << "the place's start";
  EXPECT_EQ(EndOf({.place = 32767}), "ok");
  EXPECT_EQ(EndOf({.place = 32768}), "6") << "the place's end";
}

/// The number of the failure of a row whose magnitude is bold, or bold and coloured, at these positions from the start
/// of the text; 0 for none.
int EndOfBold(int strong, int end, bool in_color) {
  std::string page = "MAP nowrap><";
  Put(page, strong, "strong>");
  if (in_color)
    page += "<";
  Put(page, end, "</A>");
  const ScanRig rig(page + WorldRow().substr(WorldRow().find("</td>\n<td nowrap><a")) + "MAP");
  return rig.failure;
}

TEST(ScanWorldList, OverflowsWhereABoldMagnitudeDoesNotFitSixteenBits) {
  EXPECT_EQ(EndOfBold(20, 40, false), 0);
  EXPECT_EQ(EndOfBold(32758, 32766, false), 0);
  EXPECT_EQ(EndOfBold(32758, 32767, false), overflow) << "the cut after it";
  EXPECT_EQ(EndOfBold(32760, 32767, false), overflow) << "its start when it is coloured";
  EXPECT_EQ(EndOfBold(32768, 32780, false), overflow) << "the marker";
  EXPECT_EQ(EndOfBold(20, 60, true), 0);
  EXPECT_EQ(EndOfBold(32737, 32766, true), 0);
  EXPECT_EQ(EndOfBold(32739, 32768, true), overflow) << "its start when it is coloured";
}

}  // namespace
}  // namespace borvane
