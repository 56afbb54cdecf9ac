#include <gtest/gtest.h>

#include "scan/scanners.h"
#include "support/failure_of.h"
#include "support/program/page_rig.h"

namespace borvane {
namespace {

/// Scans a page in a program of its own.
struct ScanRig : PageRig {
  explicit ScanRig(std::string text, int refresh_mode = 3) : PageRig(ScanRegionTable, std::move(text), refresh_mode) {}
};

using Texts = std::vector<std::string>;

const std::string heading = "<td><center>Region</center></td>";
const std::string address = "http://alaska.localhost:17650/recenteqs_sub/Quakes/ak18384056.html";
const std::string area_page = "http://alaska.localhost:17650/recenteqs_sub/";
const Texts row = {"3.8 ML", "2018/02/07 00:56:19", "300 km SE of Kodiak, AK", address, "", "", "", ""};

/// The widths of the columns, 0 for the list's own.
std::vector<float> Widths() {
  std::vector<float> widths;
  for (int column = 1; column <= frmRecords->ListView1.ColumnHeaders.Count(); ++column)
    widths.push_back(frmRecords->ListView1.ColumnHeaders(column).Width.value_or(0));
  return widths;
}

const std::vector<float> widths_at_the_end = {0, 5000, 5300, 1, 0, 0, 0};
const std::vector<float> widths_of_the_family = {0, 0, 0, 0, 0, 0, 0};

TEST(ScanRegionTable, ReadsATableOfOneRow) {
  const ScanRig rig(RegionPage(RegionRow()));
  EXPECT_EQ(rig.failure, 0);
  ASSERT_EQ(Rows(), 1);
  EXPECT_EQ(RowTexts(1), row);
  EXPECT_EQ(frmRecords->ListView1.ColumnHeaders(2).Text, "Time and Date");
  EXPECT_EQ(Widths(), widths_at_the_end);
}

TEST(ScanRegionTable, AddsARowWithAllItsTextsAtOnce) {
  const ScanRig rig(RegionPage(RegionRow()));
  EXPECT_EQ(rig.trace({"rows"}), (Lines{"rows ListView1 cleared", "rows ListView1 1 added"}));
}

TEST(ScanRegionTable, IgnoresTheMode) {
  for (const int mode : {0, 1, 2, 3, -1}) {
    const ScanRig rig(RegionPage(RegionRow()), mode);
    EXPECT_EQ(Rows(), 1) << mode;
  }
}

TEST(ScanRegionTable, KeepsTheThirdLinksAddress) {
  std::string three = RegionRow();
  for (const char number : {'1', '2', '3'})
    three.replace(three.find("ak1"), 3, std::string("bk") + number);
  const ScanRig rig(RegionPage(three));
  ASSERT_EQ(Rows(), 1);
  EXPECT_EQ(SubItem(1, 3), "http://alaska.localhost:17650/recenteqs_sub/Quakes/bk38384056.html");
}

TEST(ScanRegionTable, LeavesInThePageWhatItHasNotCut) {
  const ScanRig rig(RegionPage(RegionRow("3.8", "Kodiak")));
  EXPECT_EQ(rig.page, "Kodiak</a></td></tr></table>\n</body></html>\n") << "nothing is cut after the place";
}

TEST(ScanRegionTable, KeepsTheListOfAPageWithoutItsHeading) {
  RecordProperty("quirk", "region-page-without-its-table-keeps-the-list");
  for (const std::string &page :
       {std::string("nothing"), std::string(), RegionPage("").replace(RegionPage("").find("Region"), 6, "region")}) {
    Rig rig;
    rig.start();
    frmRecords->ListView1.ListItems.Add({"old", {}});
    rig.watch_rows(frmRecords->ListView1, "ListView1");
    Integer mode = 3;
    std::string text = page;
    ScanRegionTable(mode, text);
    EXPECT_EQ(Rows(), 1);
    EXPECT_EQ(frmRecords->ListView1.ColumnHeaders.Count(), 13) << "those of the start";
    EXPECT_EQ(text, page);
    EXPECT_TRUE(rig.trace({"rows"}).empty());
  }
}

TEST(ScanRegionTable, EndsAfterOneRowOfSeveralByAFailure) {
  RecordProperty("quirk", "region-table-ends-after-one-row");
  ScanRig with_blank(RegionPage(RegionRow() + RegionRow("4.0 ML", "Anchorage")));
  EXPECT_EQ(with_blank.failure, subscript);
  ASSERT_EQ(Rows(), 1);
  EXPECT_EQ(RowTexts(1), row);
  EXPECT_EQ(Widths(), widths_of_the_family);
  EXPECT_EQ(Newest(), "2018/02/07 00:56:19") << "the date, in place of the magnitude";
  EXPECT_EQ(frmRecords->ListView2.ListItems(1).SubItems(1), "Area");
  EXPECT_TRUE(with_blank.trace({"read", "write"}).empty()) << "the strongest event is not asked for";

  const ScanRig without_blank(RegionPage(RegionRow("3.8") + RegionRow("4.0", "Anchorage")));
  EXPECT_EQ(without_blank.failure, invalid_argument);
  EXPECT_EQ(Rows(), 1);
  EXPECT_EQ(Widths(), widths_of_the_family);
  EXPECT_EQ(Newest(), "Mag");

  const ScanRig blank_first(RegionPage(RegionRow(" 3.8") + RegionRow("4.0", "Anchorage")));
  EXPECT_EQ(blank_first.failure, subscript) << "an empty first word is taken";
}

TEST(ScanRegionTable, EndsAsAFailedRefreshWithSeveralRows) {
  WatchingRig rig;
  rig.store()["LastBig"] = "0.1";
  conffrm->Combo2.Text = "All Alaska";
  rig.serve(area_page, RegionPage(RegionRow() + RegionRow()));
  rig.clear_trace();
  rig.refresh();
  EXPECT_EQ(Rows(), 1);
  EXPECT_EQ(LastRefresh(), "");
  EXPECT_EQ(Module1->RefreshCount, 700);
  EXPECT_TRUE(rig.trace({"show", "write"}).empty()) << "neither an alert nor a strongest event";
}

TEST(ScanRegionTable, PassesASingleRowOnToNobody) {
  RecordProperty("quirk", "single-region-event-is-listed-only");
  WatchingRig rig;
  conffrm->Combo2.Text = "All Alaska";
  rig.serve(area_page, RegionPage(RegionRow("6.8 ML")));
  rig.refresh();
  EXPECT_EQ(Rows(), 1);
  EXPECT_EQ(LastRefresh(), "Last Refresh: 01:30:15") << "the refresh ends normally";
  EXPECT_EQ(Newest(), "Mag");
  EXPECT_FALSE(rig.store().Has("LastBig"));
  EXPECT_TRUE(rig.trace({"show"}).empty());
}

TEST(ScanRegionTable, ComparesTheTablesEndWithAPositionBeforeTheLastCut) {
  RecordProperty("quirk", "region-table-end-is-compared-across-a-cut");
  // "html" of the third link is character 91 after the second link; "</table>" is 15 characters after the place's
  // start.
  for (const auto &[length, failure] : std::initializer_list<std::pair<std::size_t, int>>{{75, 0}, {76, subscript}}) {
    const ScanRig rig(RegionPage(RegionRow("3.8 ML", std::string(length, 'p'))));
    EXPECT_EQ(rig.failure, failure) << length;
    EXPECT_EQ(Rows(), 1);
  }
}

TEST(ScanRegionTable, EndsATableWhoseEndIsMissingAfterOneRow) {
  const ScanRig rig("<table>" + heading + RegionRow() + RegionRow());
  EXPECT_EQ(rig.failure, 0) << "the missing tag counts as position 0";
  EXPECT_EQ(Rows(), 1);
  EXPECT_EQ(Widths(), widths_at_the_end);
}

/// Adds a row of its own after the first one, so that the scan never sees a list of one row.
struct Companion : ListWatcher {
  void RowAdded(int number) override {
    if (number == 1)
      frmRecords->ListView1.ListItems.Add({"companion", {}});
  }
  void RowsMoved() override {}
  void RowChanged(int /*number*/) override {}
  void RowsCleared() override {}
  void ColumnsChanged() override {}
};

/// Scans a page while the first row has a companion; returns the number of the failure.
int ScanWithACompanion(std::string page) {
  Companion companion;
  frmRecords->ListView1.WatchRows(&companion);
  Integer mode = 3;
  const int failure = FailureOf([&] { ScanRegionTable(mode, page); });
  frmRecords->ListView1.WatchRows(nullptr);
  return failure;
}

TEST(ScanRegionTable, PassesOnNoRowButTheOnlyOneOfTheList) {
  Rig rig;
  rig.start();
  rig.store()["LastBig"] = "9999";
  rig.clear_trace();
  EXPECT_EQ(ScanWithACompanion(RegionPage(RegionRow() + RegionRow("4.0", "Anchorage"))), 0);
  ASSERT_EQ(Rows(), 3);
  EXPECT_EQ(RowTexts(1), row);
  EXPECT_EQ(RowTexts(3)[0], "4.0");
  EXPECT_EQ(Newest(), "Mag");
  EXPECT_EQ(rig.trace({"read", "write"}), Lines{"read LastBig"}) << "of the first row; the second one ends the table";
  EXPECT_EQ(Widths(), widths_at_the_end);
}

TEST(ScanRegionTable, FailsInARowThatWouldBeTheStrongestEvent) {
  Rig rig;
  rig.start();
  EXPECT_EQ(ScanWithACompanion(RegionPage(RegionRow() + RegionRow())), subscript);
  EXPECT_EQ(Rows(), 2);
  EXPECT_EQ(rig.store()["LastBig"], "2018/02/07 00:56:19") << "the first link's text, before the missing place";
  EXPECT_FALSE(rig.store().Has("BigPlace"));
}

TEST(ScanRegionTable, TakesARowWithoutHrefButWithHtml) {
  const ScanRig rig("<table>" + heading + R"(1.html">date</a>2.html">3.8 ML</a>345678.html">Kodiak</a></table>)");
  EXPECT_EQ(rig.failure, 0);
  ASSERT_EQ(Rows(), 1);
  EXPECT_EQ(RowTexts(1), (Texts{"3.8 ML", "date", "Kodiak", "L</a>345678.html", "", "", "", ""}))
      << "the address begins at character 6 of the text";
}

TEST(ScanRegionTable, FailsInARowWithoutHtml) {
  std::string without = RegionRow();
  while (without.find("html") != std::string::npos)
    without.replace(without.find("html"), 4, "HTML");
  const ScanRig rig("<table>" + heading + without + "</table>");
  EXPECT_EQ(rig.failure, invalid_argument);
  EXPECT_EQ(Rows(), 0);
  EXPECT_EQ(frmRecords->ListView1.ColumnHeaders.Count(), 7) << "the list has been prepared before";
}

TEST(ScanRegionTable, FailsInATableWithoutRowsAfterEmptyingTheList) {
  const ScanRig rig("<table>" + heading + "</table>");
  EXPECT_EQ(rig.failure, invalid_argument);
  EXPECT_EQ(rig.page, "td><center>Region</center></td></table>") << "one character has been cut with the heading";
}

// Sixteen bits.

int FailureOfTable(const std::string &rows) { return ScanRig(heading + rows).failure; }

TEST(ScanRegionTable, OverflowsWhereAPositionOrASumMadeFromItDoesNotFitSixteenBits) {
  constexpr int before = 31;  // characters of the heading are left in front of the rows
  const std::string next_links = R"(">date</a>2.html">3.8</a>html">K</a>)";
  const auto with_html_at = [&](int position) {
    return FailureOfTable("<a href=\"" + AtPosition(position - before - 9, "html") + next_links);
  };
  EXPECT_EQ(with_html_at(60), 0);
  EXPECT_EQ(with_html_at(32761), 0);
  EXPECT_EQ(with_html_at(32762), overflow) << "the cut after the address";
  EXPECT_EQ(with_html_at(32768), overflow) << "the address's end";

  const auto with_href_at = [&](int position) {
    return FailureOfTable("html" + AtPosition(position - before - 4, "href"));
  };
  EXPECT_EQ(with_href_at(32761), invalid_argument) << "the address would end before its start";
  EXPECT_EQ(with_href_at(32762), overflow) << "the address's start";
  EXPECT_EQ(with_href_at(32768), overflow) << "its link";

  const auto with_text_of = [&](int length) {
    return FailureOfTable(R"(1.html">date</a>2.html">3.8</a>3.html">)" + AtPosition(length + 1, "<"));
  };
  EXPECT_EQ(with_text_of(32766), 0);
  EXPECT_EQ(with_text_of(32767), overflow) << "the end of the text";
}

TEST(ScanRegionTable, OverflowsWhereItsHeadingLiesBeyondSixteenBits) {
  for (const auto &[position, failure, rows] :
       std::initializer_list<std::tuple<int, int, int>>{{32766, 0, 1}, {32767, overflow, 0}, {32768, overflow, -1}}) {
    Rig rig;
    rig.start();
    frmRecords->ListView1.ListItems.Add({"old", {}});
    std::string page = AtPosition(position, heading + RegionRow() + "</table>");
    Integer mode = 3;
    EXPECT_EQ(FailureOf([&] { ScanRegionTable(mode, page); }), failure) << position;
    const bool is_emptied = rows >= 0;
    EXPECT_EQ(Rows(), is_emptied ? rows : 1) << position;
    EXPECT_EQ(frmRecords->ListView1.ColumnHeaders.Count(), is_emptied ? 7 : 13) << "emptied before the cut";
  }
}

}  // namespace
}  // namespace borvane
