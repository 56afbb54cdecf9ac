#include <gtest/gtest.h>

#include "records/frmRecords.h"
#include "scan/scanners.h"
#include "support/idle_host.h"
#include "support/memory_count.h"
#include "support/program/pages.h"

namespace borvane {
namespace {

/// How many allocations a scan of that many rows makes.
std::size_t AllocationsOfScan(int rows) {
  IdleHost host;
  const Program program(host.Services(), host);
  std::string text;
  for (int row = 0; row < rows; ++row)
    text += Row();
  std::string page = Page(text);
  Integer mode = 3;
  const std::size_t before = Allocations();
  ScanQuakesList(mode, page);
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), rows);
  return Allocations() - before;
}

TEST(ScanQuakesListCost, AllocatesOnceForARow) {
  const std::size_t few = AllocationsOfScan(1000);
  const std::size_t many = AllocationsOfScan(3000);

  // The row's further texts; the first one is short enough to be stored in the row itself. The list grows in a few
  // steps.
  constexpr std::size_t steps = 4;
  EXPECT_LE(many - few, 2000 + steps);
  EXPECT_GE(many - few, 2000) << "the allocations are not counted";
}

}  // namespace
}  // namespace borvane
