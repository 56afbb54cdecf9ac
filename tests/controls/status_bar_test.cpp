#include "controls/status_bar.h"

#include <gtest/gtest.h>

#include "basic/failure.h"
#include "support/box.h"

namespace borvane {
namespace {

TEST(StatusBar, CountsItsPanelsFromOne) {
  Box box;
  StatusBar bar{box, "StatusBar1", {.PanelWidths = {1840, 4440}}};
  bar.Panels(2).Text = "Last Refresh: ";
  EXPECT_EQ(bar.PanelCount(), 2);
  EXPECT_EQ(bar.Panels(1).Text(), "");
  EXPECT_EQ(bar.Panels(1).Width, 1840);
  EXPECT_EQ(bar.Panels(2).Text(), "Last Refresh: ");
  EXPECT_EQ(bar.Panels(2).Width, 4440);
}

TEST(StatusBar, RaisesASubscriptFailureForAPanelThatIsNotThere) {
  Box box;
  StatusBar bar{box, "StatusBar1", {.PanelWidths = {1840, 4440}}};
  EXPECT_THROW(bar.Panels(0), RuntimeError);
  EXPECT_THROW(bar.Panels(3), RuntimeError);
}

}  // namespace
}  // namespace borvane
