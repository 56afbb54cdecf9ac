#include <gtest/gtest.h>

#include "scan/scanners.h"

namespace borvane {
namespace {

TEST(Scanners, HaveTheirOwnFieldBounds) {
  EXPECT_EQ(quakes_list_bound, 20);
  EXPECT_EQ(map_list_bound, 20);
  EXPECT_EQ(map_anchor_list_bound, 10);
  EXPECT_EQ(world_list_bound, 10);
  EXPECT_EQ(region_table_bound, 4);
}

}  // namespace
}  // namespace borvane
