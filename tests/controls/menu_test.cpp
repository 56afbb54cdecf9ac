#include "controls/menu.h"

#include <vector>

#include <gtest/gtest.h>

#include "support/box.h"

namespace borvane {
namespace {

TEST(MenuItem, BelongsToItsMenu) {
  Box box;
  Menu menu{box, "Tmnu", {.Caption = "Menu"}};
  MenuItem item{menu, "mnuGrid", {.Caption = "Grid lines", .Checked = true}};
  EXPECT_FALSE(menu.Visible());
  EXPECT_TRUE(item.Checked());
  EXPECT_EQ(menu.children(), std::vector<Control *>{&item});
}

}  // namespace
}  // namespace borvane
