#include "controls/combo_box.h"

#include <gtest/gtest.h>

#include "basic/failure.h"
#include "support/box.h"

namespace borvane {
namespace {

struct Areas {
  Box box;
  ComboBox combo{box, "Combo2", {}};
  int clicks = 0;

  Areas() {
    combo.AddItem("* ALASKA");
    combo.AddItem("All Alaska");
    combo.Click = [this] { ++clicks; };
  }
};

TEST(ComboBox, StartsWithItsDesignTextAndEntriesAndNothingPicked) {
  Box box;
  const ComboBox combo{box, "Combo1", {.Text = "none", .Entries = {"first", "second"}, .Editable = false}};
  EXPECT_EQ(combo.Text(), "none");
  EXPECT_EQ(combo.ListCount(), 2);
  EXPECT_EQ(combo.List(1), "second");
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_FALSE(combo.editable());
}

TEST(ComboBox, AppendsEntries) {
  const Areas areas;
  EXPECT_EQ(areas.combo.ListCount(), 2);
  EXPECT_EQ(areas.combo.List(0), "* ALASKA");
  EXPECT_EQ(areas.combo.List(1), "All Alaska");
}

TEST(ComboBox, ReturnsAnEmptyTextWhereThereIsNoEntry) {
  const Areas areas;
  EXPECT_EQ(areas.combo.List(-1), "");
  EXPECT_EQ(areas.combo.List(2), "");
}

TEST(ComboBox, TakesThePickedEntryAsItsTextAndRaisesClick) {
  Areas areas;
  areas.combo.Select(1);
  EXPECT_EQ(areas.combo.Text(), "All Alaska");
  EXPECT_EQ(areas.combo.ListIndex(), 1);
  EXPECT_EQ(areas.clicks, 1);
}

TEST(ComboBox, RaisesClickForTheSameEntryAgain) {
  Areas areas;
  areas.combo.Select(1);
  areas.combo.Select(1);
  EXPECT_EQ(areas.combo.ListIndex(), 1);
  EXPECT_EQ(areas.clicks, 2);
}

TEST(ComboBox, RaisesNothingWhenItsTextIsWritten) {
  Areas areas;
  areas.combo.Text = "All Alaska";
  EXPECT_EQ(areas.clicks, 0);
  EXPECT_EQ(areas.combo.ListIndex(), -1);
}

TEST(ComboBox, ForgetsThePickedPositionWhenAnotherTextIsWritten) {
  Areas areas;
  areas.combo.Select(1);
  areas.combo.Text = "";
  EXPECT_EQ(areas.combo.ListIndex(), -1);
}

TEST(ComboBox, KeepsThePickedPositionWhateverElseOfItChanges) {
  Areas areas;
  areas.combo.Select(1);
  areas.combo.Enabled = false;
  areas.combo.Width = 900;
  EXPECT_EQ(areas.combo.ListIndex(), 1);
}

TEST(ComboBox, LetsTheClickHandlerEmptyTheText) {
  Areas areas;
  areas.combo.Click = [&] { areas.combo.Text = ""; };
  areas.combo.Select(0);
  EXPECT_EQ(areas.combo.Text(), "");
  EXPECT_EQ(areas.combo.ListIndex(), -1);
}

TEST(ComboBox, RaisesASubscriptFailureWhenNoSuchEntryCanBePicked) {
  Areas areas;
  EXPECT_THROW(areas.combo.Select(2), RuntimeError);
  EXPECT_THROW(areas.combo.Select(-1), RuntimeError);
  EXPECT_EQ(areas.clicks, 0);
}

}  // namespace
}  // namespace borvane
