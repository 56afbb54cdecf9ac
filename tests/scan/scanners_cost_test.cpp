#include <gtest/gtest.h>

#include "scan/scanners.h"
#include "support/failure_of.h"
#include "support/program/list_pages.h"
#include "support/program/search_work.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

struct Cost {
  int rows = 0;
  double reads_per_byte = 0;  // how many bytes the searches read per byte of the page
};

Cost CostOf(Scanner scan, const std::string &text) {
  Rig rig;
  rig.start();
  std::string page = text;
  Integer mode = 3;
  TakeSearchWork();
  FailureOf([&] { scan(mode, page); });
  const std::size_t work = TakeSearchWork();
  return {frmRecords->ListView1.ListItems.Count(), static_cast<double>(work) / static_cast<double>(text.size())};
}

/// A page of many lines.
struct LongPage {
  std::string line;
  std::string end = {};
  std::size_t size = 5'000'000;
  std::string beginning = {};

  /// The page with lines up to `long_size` characters.
  std::string Text(std::size_t long_size) const {
    std::string page = beginning;
    while (page.size() < long_size)
      page += line;
    return page + end;
  }
};

/// Scans a page: first a short one, whose cost reveals a scan that is not linear before the long one needs an hour,
/// then a long one. Each byte is read a few times at most, once for each of the scanner's searches: a mark that has
/// been found, or is missing, is not searched again.
Cost ExpectLinear(Scanner scan, const LongPage &page, double max_reads = 8) {
  Cost cost;
  for (const std::size_t size : {std::size_t{50'000}, page.size}) {
    cost = CostOf(scan, page.Text(size));
    EXPECT_LT(cost.reads_per_byte, max_reads) << page.line.substr(0, 100) << " in " << size << " bytes";
    if (testing::Test::HasFailure())
      break;
  }
  return cost;
}

/// `text` so many times.
std::string Times(int times, std::string_view text) {
  std::string all;
  for (int time = 0; time < times; ++time)
    all += text;
  return all;
}

constexpr std::size_t fifty_megabytes = 50'000'000;

TEST(ScanQuakesListCost, IsLinearOnAnOrdinaryPage) {
  const Cost cost = ExpectLinear(ScanQuakesList, {Row(), "</PRE>"});
  EXPECT_GT(cost.rows, 25000);
  EXPECT_GT(cost.reads_per_byte, 1) << "the searches are not counted";
}

TEST(ScanQuakesListCost, IsLinearWithoutAnEqualsSignOnThePage) {
  const Cost cost = ExpectLinear(
      ScanQuakesList, {"aaaaaaaaaaaa 1.6  /recenteqs/Quakes/a>d t la lo 5<k> place\n", "<", fifty_megabytes});
  EXPECT_GT(cost.rows, 800000) << "every row is read";
}

TEST(ScanQuakesListCost, IsLinearWhereTheNextEqualsSignLiesFarAway) {
  const std::string rows = Times(400, "aaaaaaaaaaaa 1.6  /recenteqs/Quakes/a>d t la lo 5<k> place\n");
  const Cost cost = ExpectLinear(ScanQuakesList, {rows + "=\"/x\">d t la lo 5<k> place\n", "<"});
  EXPECT_GT(cost.rows, 200) << "one row swallows four hundred";
}

TEST(ScanQuakesListCost, IsLinearWhereNoLineFeedIsNear) {
  const Cost cost =
      ExpectLinear(ScanQuakesList, {"aaaaaaaaaaaa 1.6  /recenteqs/Quakes/=\"/x\">d t la lo 5<k> place", "\n<"});
  EXPECT_EQ(cost.rows, 0) << "the line feed lies too far away for the first row";
}

TEST(ScanQuakesListCost, IsLinearOnPagesThatBeginMarksAndEndNone) {
  for (const char *line :
       {"/", "/recenteqs/Quake", "<", ">", " ", "\n", "= <>\n", "aaaaaaaaaaaa 1.6  /recenteqs/Quakes"})
    EXPECT_EQ(ExpectLinear(ScanQuakesList, {line}).rows, 0) << line;
}

// The map list.

TEST(ScanMapListCost, IsLinearOnAnOrdinaryPage) {
  const Cost cost = ExpectLinear(ScanMapList, {MapRow() + CapitalMapRow(), MapPage("")});
  EXPECT_GT(cost.rows, 25000);
}

TEST(ScanMapListCost, IsLinearWithoutACapitalMarkerOnThePage) {
  const Cost cost = ExpectLinear(
      ScanMapList, {"aaaaaaa> 7.7<A HREF=\"/x\">d t la lo 5</A>.place.<BR>.>map</A>", "", fifty_megabytes});
  EXPECT_GT(cost.rows, 700000) << "every row is read, from near the start of what is left";
}

TEST(ScanMapListCost, IsLinearWithoutASmallMarkerOnThePage) {
  EXPECT_EQ(ExpectLinear(ScanMapList, {CapitalMapRow(), "", fifty_megabytes}).rows, 0);
}

TEST(ScanMapListCost, IsLinearWhereTheNextCapitalMarkerLiesFarAway) {
  const std::string rows = Times(400, ">map</A> 1<A HREF=\"/x\">d t la lo 5</A>.place.<BR>.");
  const Cost cost = ExpectLinear(ScanMapList, {rows + CapitalMapRow(), MapPage("")});
  EXPECT_GT(cost.rows, 50000);
}

TEST(ScanMapListCost, IsLinearWhereTheNextSmallMarkerLiesFarAway) {
  const std::string rows = Times(400, ">MAP</A><B> 1<A HREF=\"/x\">d t la lo 5</A>.place.<BR>.");
  const Cost cost = ExpectLinear(ScanMapList, {rows + MapRow(), MapPage("")});
  EXPECT_GT(cost.rows, 50000);
}

TEST(ScanMapListCost, IsLinearOnPagesThatBeginMarksAndEndNone) {
  for (const char *line : {">", "<", " ", "A", "M", ">map</A", ">MAP</A", ">map</A>", ">MAP</A>map</A>."})
    EXPECT_EQ(ExpectLinear(ScanMapList, {line}).rows, 0) << line;
}

// The map anchor list.

TEST(ScanMapAnchorListCost, IsLinearOnAnOrdinaryPage) {
  const Cost cost = ExpectLinear(ScanMapAnchorList, {AnchorRow(), AnchorPage("")});
  EXPECT_GT(cost.rows, 20000);
}

TEST(ScanMapAnchorListCost, IsLinearOnLongPagesOfTheShortestRows) {
  const Cost cost = ExpectLinear(ScanMapAnchorList,
                                 {"MAP<.........................1<A HREF=\"x\">d t a o 5</A>p", "<", fifty_megabytes});
  EXPECT_GT(cost.rows, 700000);
}

TEST(ScanMapAnchorListCost, IsLinearWithoutAMarkerOnThePage) {
  std::string row = AnchorRow();
  row.replace(row.find("MAP"), 3, "Map");
  EXPECT_EQ(ExpectLinear(ScanMapAnchorList, {row, "", fifty_megabytes}).rows, 0);
}

TEST(ScanMapAnchorListCost, IsLinearOnPagesThatBeginMarksAndEndNone) {
  for (const char *line : {">", "<", " ", "M", "MAP", "MAP<", "MAP< ", "MAP<.........................1<A HREF="})
    EXPECT_EQ(ExpectLinear(ScanMapAnchorList, {line}).rows, 0) << line;
}

// The world list. It has more searches than the others, since a place may be plain, bold or coloured.

constexpr double reads_of_world_list = 15;

Cost ExpectLinearWorldList(const LongPage &page) { return ExpectLinear(ScanWorldList, page, reads_of_world_list); }

/// A row without blanks and without a place.
const std::string short_world_row = "MAPnowrap>4<href=\"/x\">d<nowrap>aa>1<nowrap>aa>2<nowrap>aa>3<";

TEST(ScanWorldListCost, IsLinearOnAnOrdinaryPage) {
  const std::string rows =
      WorldRow() + WorldRow(Bold("5.1"), Bold("Hualian")) + WorldRow(BoldAndColored("6.1"), BoldAndColored("Vanj"));
  const Cost cost = ExpectLinearWorldList({rows, WorldPage("")});
  EXPECT_GT(cost.rows, 10000);
}

TEST(ScanWorldListCost, IsLinearWithoutAPlacesCellOnThePage) {
  const Cost cost = ExpectLinearWorldList({short_world_row + " ", "<MAP", fifty_megabytes});
  EXPECT_GT(cost.rows, 700000) << "every row is read, with what is near the start of what is left as its place";
}

TEST(ScanWorldListCost, IsLinearWithoutAnotherMarkOnThePage) {
  for (const char *mark : {"MAP", "nowrap>", "href=", " "}) {
    std::string row = WorldRow();
    while (row.find(mark) != std::string::npos)
      row.replace(row.find(mark), 1, "_");
    EXPECT_EQ(ExpectLinearWorldList({row, "", fifty_megabytes}).rows, 0) << mark;
  }
}

/// What each row of a group looks for is far away, at the group's end, and so is its own end.
Cost CostOfGroups(const std::string &row, const std::string &end_of_group) {
  const std::string far_away(8000, '.');
  return ExpectLinearWorldList({Times(300, row) + end_of_group + far_away + "<", "MAP", 500'000});
}

TEST(ScanWorldListCost, IsLinearWhereATimeAndItsEndLieFarAway) {
  EXPECT_GT(CostOfGroups(short_world_row + "<td>p<", " ").rows, 4000);
}

TEST(ScanWorldListCost, IsLinearWhereAPlaceAndItsEndLieFarAway) {
  const std::string row = "MAP nowrap>4<href=\"/x\">d t<nowrap>aa>1<nowrap>aa>2<nowrap>aa>3<";
  EXPECT_GT(CostOfGroups(row, "<td>").rows, 4000);
  EXPECT_GT(CostOfGroups(row + "<td><", "strong>").rows, 4000) << "in bold";
  EXPECT_GT(CostOfGroups(row + "<td><", "strong><.....................").rows, 4000) << "in bold and coloured";
}

TEST(ScanWorldListCost, IsLinearOnPagesThatBeginMarksAndEndNone) {
  for (const char *line :
       {"M", "MAP", "n", "nowrap>", "MAPnowrap>", "MAPnowrap><strong>", "MAPnowrap>4<href=", "<", ">", " "})
    EXPECT_EQ(ExpectLinearWorldList({line}).rows, 0) << line;
}

// The table of a region.

const std::string region_heading = "<td><center>Region</center></td>";

TEST(ScanRegionTableCost, IsLinearWithoutAnEndOfTheTableOnThePage) {
  const Cost cost = ExpectLinear(ScanRegionTable, {RegionRow(), "", fifty_megabytes, region_heading});
  EXPECT_EQ(cost.rows, 1);
  EXPECT_GT(cost.reads_per_byte, 0.9) << "the page is searched once, to its end";
}

TEST(ScanRegionTableCost, IsLinearWhereTheEndOfTheTableLiesFarAway) {
  EXPECT_EQ(ExpectLinear(ScanRegionTable, {RegionRow(), "</table>", fifty_megabytes, region_heading}).rows, 1);
}

TEST(ScanRegionTableCost, IsLinearWithoutAHeadingOnThePage) {
  EXPECT_EQ(ExpectLinear(ScanRegionTable, {RegionRow(), "", fifty_megabytes}).rows, 0);
}

TEST(ScanRegionTableCost, IsLinearOnPagesThatBeginMarksAndEndNone) {
  for (const char *line : {"R", "<td><center>Region</center></td", "h", "href", "html", "<"}) {
    EXPECT_EQ(ExpectLinear(ScanRegionTable, {line}).rows, 0) << line;
    EXPECT_EQ(ExpectLinear(ScanRegionTable, {line, "", 5'000'000, region_heading}).rows, 0) << line;
  }
}

}  // namespace
}  // namespace borvane
