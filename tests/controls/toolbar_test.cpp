#include "controls/toolbar.h"

#include <vector>

#include <gtest/gtest.h>

#include "basic/failure.h"
#include "support/box.h"

namespace borvane {
namespace {

struct Bar {
  Box box;
  Toolbar toolbar{box,
                  "Toolbar1",
                  {.Buttons = {{.Picture = "refresh", .ToolTipText = "Auto Refresh", .TwoState = true},
                               {.Picture = "quit", .ToolTipText = "Quit"},
                               {.Picture = "bar", .ToolTipText = "Bar", .TwoState = true, .Enabled = false}}}};
  std::vector<int> clicks;

  Bar() {
    toolbar.ButtonClick = [this](int number) { clicks.push_back(number); };
  }
};

TEST(Toolbar, CountsItsButtonsFromOne) {
  Bar bar;
  EXPECT_EQ(bar.toolbar.ButtonCount(), 3);
  EXPECT_EQ(bar.toolbar.Buttons(1).Picture, "refresh");
  EXPECT_EQ(bar.toolbar.Buttons(2).ToolTipText, "Quit");
  EXPECT_EQ(bar.toolbar.Buttons(1).Value(), 0);
  EXPECT_THROW(bar.toolbar.Buttons(0), RuntimeError);
  EXPECT_THROW(bar.toolbar.Buttons(4), RuntimeError);
}

TEST(Toolbar, TogglesATwoStateButtonAtEachPress) {
  Bar bar;
  bar.toolbar.Press(1);
  EXPECT_EQ(bar.toolbar.Buttons(1).Value(), 1);
  bar.toolbar.Press(1);
  EXPECT_EQ(bar.toolbar.Buttons(1).Value(), 0);
  EXPECT_EQ(bar.clicks, (std::vector<int>{1, 1}));
}

TEST(Toolbar, HasToggledTheButtonBeforeTheClick) {
  Bar bar;
  int value = -1;
  bar.toolbar.ButtonClick = [&](int number) { value = bar.toolbar.Buttons(number).Value(); };
  bar.toolbar.Press(1);
  EXPECT_EQ(value, 1);
}

TEST(Toolbar, LeavesAPlainButtonUp) {
  Bar bar;
  bar.toolbar.Press(2);
  EXPECT_EQ(bar.toolbar.Buttons(2).Value(), 0);
  EXPECT_EQ(bar.clicks, std::vector<int>{2});
}

TEST(Toolbar, DoesNothingForADisabledButton) {
  Bar bar;
  bar.toolbar.Press(3);
  EXPECT_EQ(bar.toolbar.Buttons(3).Value(), 0);
  EXPECT_TRUE(bar.clicks.empty());
  bar.toolbar.Buttons(3).Enabled = true;
  bar.toolbar.Press(3);
  EXPECT_EQ(bar.toolbar.Buttons(3).Value(), 1);
  EXPECT_EQ(bar.clicks, std::vector<int>{3});
}

TEST(Toolbar, DoesNothingWhileItIsDisabled) {
  Bar bar;
  bar.toolbar.Enabled = false;
  bar.toolbar.Press(1);
  EXPECT_EQ(bar.toolbar.Buttons(1).Value(), 0);
  EXPECT_TRUE(bar.clicks.empty());
}

TEST(Toolbar, RaisesNothingWhenAValueIsWritten) {
  Bar bar;
  bar.toolbar.Buttons(1).Value = 1;
  EXPECT_TRUE(bar.clicks.empty());
}

}  // namespace
}  // namespace borvane
