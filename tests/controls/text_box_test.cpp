#include "controls/text_box.h"

#include <string>
#include <vector>

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

TEST(TextBox, RaisesGotFocusWhenItIsEntered) {
  Box box;
  TextBox text{box, "Text1", {}};
  int entries = 0;
  text.GotFocus = [&] { ++entries; };
  text.LostFocus.Raise();
  EXPECT_EQ(entries, 0);
  text.GotFocus.Raise();
  EXPECT_EQ(entries, 1);
}

TEST(TextBox, HasOneLineUnlessItIsDesignedWithMany) {
  Box box;
  const TextBox one{box, "Text1", {}};
  const TextBox many{box, "Text2", {.MultiLine = true}};
  EXPECT_FALSE(one.multi_line());
  EXPECT_TRUE(many.multi_line());
}

/// Sees the selections of a text box.
struct SelectionWatcher final : PropertyWatcher {
  explicit SelectionWatcher(TextBox &watched) : text(watched) { text.Watch(this); }

  void PropertyChanged(const PropertyBase &property) override {
    if (&property == &text.Selection)
      seen.push_back(text.Selection());
  }

  TextBox &text;
  std::vector<TextSelection> seen;
};

TEST(TextBox, NotifiesOfEachOtherSelectionAndRaisesNothing) {
  Box box;
  TextBox text{box, "Text1", {.Text = "seven"}};
  EXPECT_EQ(text.Selection(), (TextSelection{.start = 0, .length = 0}));
  int changes = 0;
  text.Change = [&] { ++changes; };
  SelectionWatcher watcher(text);
  text.Selection = {.start = 0, .length = 5};
  text.Selection = {.start = 0, .length = 5};
  text.Selection = {.start = 1, .length = 2};
  EXPECT_EQ(watcher.seen, (std::vector<TextSelection>{{.start = 0, .length = 5}, {.start = 1, .length = 2}}));
  EXPECT_EQ(changes, 0);
}

TEST(TextBox, KeepsTheSelectionWhenItsTextChanges) {
  Box box;
  TextBox text{box, "Text1", {.Text = "seven"}};
  text.Selection = {.start = 0, .length = 5};
  SelectionWatcher watcher(text);
  text.Text = "ten";
  EXPECT_EQ(text.Selection(), (TextSelection{.start = 0, .length = 5}));
  EXPECT_TRUE(watcher.seen.empty());
}

}  // namespace
}  // namespace borvane
