#include "controls/text_box.h"

#include <string>

#include <gtest/gtest.h>

#include "support/box.h"

namespace borvane {
namespace {

TEST(TextBox, RaisesChangeWhenItsTextChanges) {
  Box box;
  TextBox text{box, "Text5", {.Text = "10"}};
  std::string seen;
  text.Change = [&] { seen += "[" + text.Text() + "]"; };
  text.Text = "1";
  text.Text = "15";
  EXPECT_EQ(seen, "[1][15]");
}

TEST(TextBox, RaisesNoChangeWhenItsTextStays) {
  Box box;
  TextBox text{box, "Text5", {.Text = "10"}};
  int changes = 0;
  text.Change = [&] { ++changes; };
  text.Text = "10";
  text.Enabled = false;
  EXPECT_EQ(changes, 0);
}

TEST(TextBox, RaisesNoChangeWhenItIsLeft) {
  Box box;
  TextBox text{box, "Text2", {.Text = "700"}};
  int changes = 0;
  int leaves = 0;
  text.Change = [&] { ++changes; };
  text.LostFocus = [&] { ++leaves; };
  text.Text = "60";
  EXPECT_EQ(leaves, 0);
  text.LostFocus.Raise();
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(leaves, 1);
}

}  // namespace
}  // namespace borvane
