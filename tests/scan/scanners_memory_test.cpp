#include <gtest/gtest.h>

#include "records/frmRecords.h"
#include "scan/scanners.h"
#include "support/idle_host.h"
#include "support/memory_count.h"
#include "support/program/list_pages.h"

namespace borvane {
namespace {

/// A scanner, a row of its pages, and what is in front of the rows and after them.
struct Form {
  Scanner scan;
  std::string row;
  std::string beginning;
  std::string end;
};

/// How many allocations a scan of that many rows makes.
std::size_t AllocationsOfScan(const Form &form, int rows) {
  IdleHost host;
  const Program program(host.Services(), host);
  std::string page = form.beginning;
  for (int row = 0; row < rows; ++row)
    page += form.row;
  page += form.end;
  Integer mode = 3;
  const std::size_t before = Allocations();
  form.scan(mode, page);
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), rows);
  return Allocations() - before;
}

/// A row takes one allocation, for its further texts; the first one is short enough to be stored in the row itself.
void ExpectOneAllocationForARow(const Form &form) {
  const std::size_t few = AllocationsOfScan(form, 1000);
  const std::size_t many = AllocationsOfScan(form, 3000);

  // The list grows in a few steps.
  constexpr std::size_t steps = 4;
  EXPECT_LE(many - few, 2000 + steps);
  EXPECT_GE(many - few, 2000) << "the allocations are not counted";
}

TEST(ScanQuakesListCost, AllocatesOnceForARow) {
  ExpectOneAllocationForARow({ScanQuakesList, Row(), "<PRE>\n", "</PRE>\n"});
}

TEST(ScanMapListCost, AllocatesOnceForARow) {
  // The small marker of the row of the other form is in its place.
  ExpectOneAllocationForARow(
      {ScanMapList, ">MAP</A>map</A>. 3.2<A HREF=\"/x\">d t la lo 5</A> >place .<BR>.", "", MapPage("")});
}

TEST(ScanMapAnchorListCost, AllocatesOnceForARow) {
  ExpectOneAllocationForARow({ScanMapAnchorList, AnchorRow(), "", AnchorPage("")});
}

TEST(ScanWorldListCost, AllocatesOnceForARow) {
  ExpectOneAllocationForARow({ScanWorldList, WorldRow(), "", WorldPage("")});
}

}  // namespace
}  // namespace borvane
