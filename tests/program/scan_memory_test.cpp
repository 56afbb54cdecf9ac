#include <gtest/gtest.h>

#include "program/pages.h"
#include "records/frmRecords.h"
#include "scan/scanners.h"
#include "support/memory_count.h"
#include "support/rig.h"

namespace borvane {
namespace {

/// How many pieces of memory a scan of that many rows takes.
std::size_t MemoryOfScan(int rows) {
  Rig rig;
  rig.start();
  std::string text;
  for (int row = 0; row < rows; ++row)
    text += Row();
  std::string page = Page(text);
  Integer mode = 3;
  const std::size_t before = PiecesOfMemory();
  ScanQuakesList(mode, page);
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), rows);
  return PiecesOfMemory() - before;
}

TEST(ScanQuakesListCost, TakesOnePieceOfMemoryForARow) {
  const std::size_t few = MemoryOfScan(1000);
  const std::size_t many = MemoryOfScan(3000);

  // The row's further texts; the first one is short enough to lie in the row itself. The list grows in a few steps.
  constexpr std::size_t steps = 4;
  EXPECT_LE(many - few, 2000 + steps);
  EXPECT_GE(many - few, 2000) << "the pieces are not counted";
}

}  // namespace
}  // namespace borvane
