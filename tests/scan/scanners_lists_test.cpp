#include <ostream>

#include <gtest/gtest.h>

#include "scan/scanners.h"
#include "support/program/page_rig.h"

namespace borvane {
namespace {

/// A list that is read row by row: its scanner and its pages.
struct ListCase {
  const char *name;
  Scanner scan;
  std::string (*row)(std::string_view magnitude, std::string_view place);
  std::string (*other_row)(std::string_view magnitude, std::string_view place);  // in another form, if there is one
  std::string (*page)(std::string_view rows);
  const char *page_without_rows;
};

void PrintTo(const ListCase &list, std::ostream *out) { *out << list.name; }

std::string BoldWorldRow(std::string_view magnitude, std::string_view place) {
  return WorldRow(Bold(magnitude), Bold(place));
}

const ListCase lists[] = {
    {"QuakesList", ScanQuakesList, Row, Row, Page, "nothing"},
    {"MapList", ScanMapList, MapRow, CapitalMapRow, MapPage, "nothing"},
    {"MapAnchorList", ScanMapAnchorList, AnchorRow, AnchorRow, AnchorPage, "nothing"},
    {"WorldList", ScanWorldList, WorldRow, BoldWorldRow, WorldPage, "MAP"},
};

/// What holds for the scanner of each list.
class ListScanner : public testing::TestWithParam<ListCase> {
 protected:
  std::string Row(std::string_view magnitude) const { return GetParam().row(magnitude, "Castaic, CA"); }
  std::string OtherRow(std::string_view magnitude) const { return GetParam().other_row(magnitude, "Milford, UT"); }
  std::string Page(std::string_view rows) const { return GetParam().page(rows); }
};

INSTANTIATE_TEST_SUITE_P(Each, ListScanner, testing::ValuesIn(lists),
                         [](const auto &list) { return std::string(list.param.name); });

TEST_P(ListScanner, EmptiesTheListFirstAndSetsItsColumns) {
  Rig rig;
  rig.start();
  frmRecords->ListView1.ListItems.Add({"old", {}});
  Integer mode = 3;
  std::string page = GetParam().page_without_rows;
  GetParam().scan(mode, page);
  EXPECT_EQ(Rows(), 0);
  EXPECT_EQ(frmRecords->ListView1.ColumnHeaders.Count(), 8);
}

TEST_P(ListScanner, PassesOnlyTheFirstRowToTheUpperListAndEachToTheStrongestEvent) {
  PageRig rig(GetParam().scan, Page(OtherRow("3.2") + Row("1.1") + OtherRow("4.0") + Row("1.1")));
  EXPECT_EQ(rig.trace({"rows"}), (Lines{"rows ListView1 cleared", "rows ListView1 1 added", "rows ListView2 1 changed",
                                        "rows ListView2 1 changed", "rows ListView2 1 changed",
                                        "rows ListView1 2 added", "rows ListView1 3 added", "rows ListView1 4 added"}));
  EXPECT_EQ(Newest(), "3.2");
  EXPECT_EQ(rig.store()["LastBig"], "4.0");
}

TEST_P(ListScanner, IgnoresTheMode) {
  for (const int mode : {0, 1, 2, 3, -1}) {
    const PageRig rig(GetParam().scan, Page(Row("1.1")), mode);
    EXPECT_EQ(Rows(), 1) << mode;
  }
}

TEST_P(ListScanner, LeavesThePageUnchangedWhenItFindsNothing) {
  const std::string page = GetParam().page_without_rows;
  const PageRig rig(GetParam().scan, page);
  EXPECT_EQ(rig.failure, 0);
  EXPECT_EQ(rig.page, page);
}

TEST_P(ListScanner, ReadsAPageOfAnyLength) {
  std::string rows;
  for (int row = 0; row < 1000; ++row)
    rows += OtherRow("3.2") + Row("1.1");
  const PageRig rig(GetParam().scan, Page(rows));
  EXPECT_EQ(rig.failure, 0);
  ASSERT_EQ(Rows(), 2000);
  EXPECT_EQ(RowTexts(1999), RowTexts(1));
  EXPECT_EQ(SubItem(1999, 6), "Milford, UT");
  EXPECT_EQ(RowTexts(2000), RowTexts(2));
  EXPECT_EQ(SubItem(2000, 6), "Castaic, CA");
}

}  // namespace
}  // namespace borvane
