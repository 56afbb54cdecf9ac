#include <gtest/gtest.h>

#include "scan/scanners.h"
#include "support/failure_of.h"
#include "support/program/search_work.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

struct Cost {
  int rows = 0;
  double reads_per_byte = 0;  // how many bytes the searches read per byte of the page
};

Cost CostOf(const std::string &text) {
  Rig rig;
  rig.start();
  std::string page = text;
  Integer mode = 3;
  TakeSearchWork();
  FailureOf([&] { ScanQuakesList(mode, page); });
  const std::size_t work = TakeSearchWork();
  return {frmRecords->ListView1.ListItems.Count(), static_cast<double>(work) / static_cast<double>(text.size())};
}

/// `line` repeated up to `size` characters, then `end`.
std::string Repeated(std::string_view line, std::size_t size, std::string_view end) {
  std::string page;
  while (page.size() < size)
    page += line;
  return page + std::string(end);
}

/// Scans pages of `line`: first a short one, whose cost reveals a scan that is not linear before the long one needs an
/// hour, then a long one. Each byte is read a few times at most: a mark that has been found, or is missing, is not
/// searched again.
Cost ExpectLinear(std::string_view line, std::string_view end = "", std::size_t long_size = 5'000'000) {
  constexpr double max_reads = 8;
  Cost cost;
  for (const std::size_t size : {std::size_t{50'000}, long_size}) {
    cost = CostOf(Repeated(line, size, end));
    EXPECT_LT(cost.reads_per_byte, max_reads) << line << " in " << size << " bytes";
    if (testing::Test::HasFailure())
      break;
  }
  return cost;
}

TEST(ScanQuakesListCost, IsLinearOnAnOrdinaryPage) {
  const Cost cost = ExpectLinear(Row(), "</PRE>");
  EXPECT_GT(cost.rows, 25000);
  EXPECT_GT(cost.reads_per_byte, 1) << "the searches are not counted";
}

TEST(ScanQuakesListCost, IsLinearWithoutAnEqualsSignOnThePage) {
  const Cost cost = ExpectLinear("aaaaaaaaaaaa 1.6  /recenteqs/Quakes/a>d t la lo 5<k> place\n", "<", 50'000'000);
  EXPECT_GT(cost.rows, 800000) << "every row is read";
}

TEST(ScanQuakesListCost, IsLinearWhereTheNextEqualsSignLiesFarAway) {
  std::string rows;
  for (int row = 0; row < 400; ++row)
    rows += "aaaaaaaaaaaa 1.6  /recenteqs/Quakes/a>d t la lo 5<k> place\n";
  const Cost cost = ExpectLinear(rows + "=\"/x\">d t la lo 5<k> place\n", "<");
  EXPECT_GT(cost.rows, 200) << "one row swallows four hundred";
}

TEST(ScanQuakesListCost, IsLinearWhereNoLineFeedIsNear) {
  const Cost cost = ExpectLinear("aaaaaaaaaaaa 1.6  /recenteqs/Quakes/=\"/x\">d t la lo 5<k> place", "\n<");
  EXPECT_EQ(cost.rows, 0) << "the line feed lies too far away for the first row";
}

TEST(ScanQuakesListCost, IsLinearOnPagesThatBeginMarksAndEndNone) {
  for (const char *line :
       {"/", "/recenteqs/Quake", "<", ">", " ", "\n", "= <>\n", "aaaaaaaaaaaa 1.6  /recenteqs/Quakes"})
    EXPECT_EQ(ExpectLinear(line).rows, 0) << line;
}

}  // namespace
}  // namespace borvane
