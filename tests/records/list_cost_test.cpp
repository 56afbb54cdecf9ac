#include <gtest/gtest.h>

#include "records/frmRecords.h"
#include "scan/scanners.h"
#include "support/idle_host.h"
#include "support/memory_count.h"
#include "support/program/pages.h"

namespace borvane {
namespace {

/// How many allocations a scan of that many rows makes, and the first look at them.
std::size_t AllocationsOfScan(int rows, bool sorted) {
  IdleHost host;
  const Program program(host.Services(), host);
  ListView &list = frmRecords->ListView1;
  list.Sorted = sorted;
  std::string text;
  for (int row = 0; row < rows; ++row)
    text += Row(std::to_string(row % 10) + "." + std::to_string(row % 7));
  std::string page = Page(text);
  Integer mode = 3;
  const std::size_t before = Allocations();
  ScanQuakesList(mode, page);
  EXPECT_EQ(list.ListItems(1).Text, "0.0");
  EXPECT_EQ(list.ListItems(rows).Text,
            sorted ? "9.6" : std::to_string((rows - 1) % 10) + "." + std::to_string((rows - 1) % 7));
  return Allocations() - before;
}

TEST(SortedListCost, HasOneSortForAllRowsOfAPage) {
  constexpr std::size_t steps = 10;  // keys, rows and the memory of one sort
  for (const int rows : {1000, 3000})
    EXPECT_LE(AllocationsOfScan(rows, true), AllocationsOfScan(rows, false) + steps) << rows;
}

}  // namespace
}  // namespace borvane
