#include "controls/list_view.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "basic/failure.h"
#include "support/box.h"
#include "support/failure_of.h"

namespace borvane {
namespace {

struct RowWatcher : ListWatcher {
  std::vector<std::string> seen;

  void RowAdded(int row) override { seen.push_back("added " + std::to_string(row)); }
  void RowsMoved() override { seen.emplace_back("moved"); }
  void RowChanged(int row) override { seen.push_back("changed " + std::to_string(row)); }
  void RowsCleared() override { seen.emplace_back("cleared"); }
  void ColumnsChanged() override { seen.emplace_back("columns"); }
};

struct Events {
  Box box;
  ListView list{box, "ListView1", {.Columns = {{"Magnitude", {}}, {"Where?", 5400.0F}}, .HideColumnHeaders = true}};
};

TEST(ListView, StartsWithItsDesignColumnsAndNoRows) {
  Events events;
  EXPECT_EQ(events.list.ListItems.Count(), 0);
  ASSERT_EQ(events.list.ColumnHeaders.Count(), 2);
  EXPECT_EQ(events.list.ColumnHeaders(1).Text, "Magnitude");
  EXPECT_FALSE(events.list.ColumnHeaders(1).Width.has_value());
  EXPECT_EQ(events.list.ColumnHeaders(2).Width, 5400.0F);
  EXPECT_TRUE(events.list.hides_column_headers());
  EXPECT_FALSE(events.list.GridLines());
  EXPECT_FALSE(events.list.Sorted());
  EXPECT_EQ(events.list.SortKey(), 0);
  EXPECT_EQ(events.list.SortOrder(), ListView::ascending);
}

TEST(ListColumns, GiveAColumnAWidthAndNotifyTheirWatcher) {
  Events events;
  RowWatcher watcher;
  events.list.WatchRows(&watcher);
  events.list.ColumnHeaders.SetWidth(1, 5000.0F);
  events.list.ColumnHeaders.SetWidth(2, 1.0F);
  EXPECT_EQ(events.list.ColumnHeaders(1).Width, 5000.0F);
  EXPECT_EQ(events.list.ColumnHeaders(2).Width, 1.0F);
  EXPECT_EQ(watcher.seen, (std::vector<std::string>{"columns", "columns"}));
  for (const int column : {-1, 0, 3})
    EXPECT_EQ(FailureOf([&] { events.list.ColumnHeaders.SetWidth(column, 1.0F); }), 9) << column;
}

TEST(ListRows, KeepsRowsInInsertionOrderCountedFromOne) {
  Events events;
  events.list.ListItems.Add({"2.0", {"2018/02/07", "01:26:13"}});
  events.list.ListItems.Add({"1.6", {}});
  ASSERT_EQ(events.list.ListItems.Count(), 2);
  EXPECT_EQ(events.list.ListItems(1).Text, "2.0");
  EXPECT_EQ(events.list.ListItems(1).SubItems(1), "2018/02/07");
  EXPECT_EQ(events.list.ListItems(1).SubItems(2), "01:26:13");
  EXPECT_EQ(events.list.ListItems(2).Text, "1.6");
}

TEST(ListRows, ReturnsAnEmptyTextForASubItemThatHasNotBeenSet) {
  Events events;
  events.list.ListItems.Add({"2.0", {"2018/02/07"}});
  EXPECT_EQ(events.list.ListItems(1).SubItems(2), "");
  EXPECT_THROW(events.list.ListItems(1).SubItems(0), RuntimeError);
}

TEST(ListRows, HaveTheirFirstRowAsTheCurrentOneUntilTheUserComesToAnother) {
  Events events;
  ListRows &rows = events.list.ListItems;
  EXPECT_EQ(rows.Current(), 0);
  rows.Add({"2.0", {}});
  rows.Add({"1.6", {}});
  EXPECT_EQ(rows.Current(), 1);
  EXPECT_EQ(events.list.SelectedItem().Text, "2.0");
  rows.Choose(2);
  rows.Add({"1.2", {}});
  EXPECT_EQ(rows.Current(), 2);
  EXPECT_EQ(events.list.SelectedItem().Text, "1.6");
}

TEST(ListRows, LoseTheirCurrentRowWhenTheyAreCleared) {
  Events events;
  ListRows &rows = events.list.ListItems;
  EXPECT_EQ(FailureOf([&] { events.list.SelectedItem(); }), 91);
  rows.Add({"2.0", {}});
  rows.Add({"1.6", {}});
  rows.Choose(2);
  rows.Clear();
  EXPECT_EQ(rows.Current(), 0);
  EXPECT_EQ(FailureOf([&] { events.list.SelectedItem(); }), 91);
  rows.Add({"1.2", {}});
  EXPECT_EQ(rows.Current(), 1);
}

TEST(ListRows, RefuseACurrentRowThatIsNotThere) {
  Events events;
  events.list.ListItems.Add({"2.0", {}});
  for (const int row : {-1, 2})
    EXPECT_EQ(FailureOf([&] { events.list.ListItems.Choose(row); }), 9) << row;
  EXPECT_EQ(events.list.ListItems.Current(), 1);
}

TEST(ListRows, MayHaveNoCurrentRowThoughThereAreRows) {
  Events events;
  events.list.ListItems.Add({"2.0", {}});
  events.list.ListItems.Choose(0);
  events.list.ListItems.Add({"1.6", {}});
  EXPECT_EQ(events.list.ListItems.Current(), 0);
  EXPECT_EQ(FailureOf([&] { events.list.SelectedRow(); }), 91);
  EXPECT_EQ(FailureOf([&] { events.list.SelectedItem(); }), 91);
  events.list.ListItems.Choose(2);
  EXPECT_EQ(events.list.SelectedRow(), 2);
}

TEST(ListRows, RaisesASubscriptFailureForARowThatIsNotThere) {
  Events events;
  EXPECT_THROW(events.list.ListItems(1), RuntimeError);
  events.list.ListItems.Add({"2.0", {}});
  EXPECT_THROW(events.list.ListItems(0), RuntimeError);
  EXPECT_THROW(events.list.ListItems(2), RuntimeError);
  EXPECT_THROW(events.list.ListItems.SetText(0, "x"), RuntimeError);
  EXPECT_THROW(events.list.ListItems.SetText(2, "x"), RuntimeError);
  EXPECT_THROW(events.list.ListItems.SetSubItem(2, 1, "x"), RuntimeError);
  EXPECT_THROW(events.list.ListItems.SetSubItem(1, 0, "x"), RuntimeError);
}

TEST(ListRows, OverwritesTextsInPlace) {
  Events events;
  events.list.ListItems.Add({"Mag", {"Area"}});
  events.list.ListItems.SetText(1, "2.0");
  events.list.ListItems.SetSubItem(1, 1, "Yucaipa");
  events.list.ListItems.SetSubItem(1, 3, "far");
  EXPECT_EQ(events.list.ListItems(1).Text, "2.0");
  EXPECT_EQ(events.list.ListItems(1).SubItems(1), "Yucaipa");
  EXPECT_EQ(events.list.ListItems(1).SubItems(2), "");
  EXPECT_EQ(events.list.ListItems(1).SubItems(3), "far");
}

TEST(ListRows, CopiesASubItemOfTheSameRow) {
  Events events;
  events.list.ListItems.Add({"2.0", {"Yucaipa"}});
  events.list.ListItems.SetSubItem(1, 7, events.list.ListItems(1).SubItems(1));
  EXPECT_EQ(events.list.ListItems(1).SubItems(7), "Yucaipa");
}

TEST(ListRows, NotifiesItsWatcherOfEachChange) {
  Events events;
  RowWatcher watcher;
  events.list.WatchRows(&watcher);
  events.list.ListItems.Add({"Mag", {}});
  events.list.ListItems.Add({"2.0", {}});
  events.list.ListItems.SetText(2, "3.0");
  events.list.ListItems.SetSubItem(1, 2, "x");
  events.list.ListItems.Clear();
  EXPECT_EQ(watcher.seen, (std::vector<std::string>{"added 1", "added 2", "changed 2", "changed 1", "cleared"}));
}

TEST(ListRows, NotifiesItsWatcherOnceTheRowCanBeRead) {
  Events events;
  struct Reader : RowWatcher {
    ListView *list = nullptr;
    std::string text;
    void RowAdded(int row) override { text = list->ListItems(row).Text; }
  } reader;
  reader.list = &events.list;
  events.list.WatchRows(&reader);
  events.list.ListItems.Add({"2.0", {}});
  EXPECT_EQ(reader.text, "2.0");
}

TEST(ListRows, NotifiesNobodyOnceTheWatcherIsRemoved) {
  Events events;
  RowWatcher watcher;
  events.list.WatchRows(&watcher);
  events.list.WatchRows(nullptr);
  events.list.ListItems.Add({"2.0", {}});
  events.list.ColumnHeaders.Clear();
  EXPECT_TRUE(watcher.seen.empty());
}

TEST(ListColumns, AreClickedByTheUser) {
  Events events;
  std::vector<std::string> clicked;
  events.list.ColumnClick = [&](const ColumnHeader &header) {
    events.list.ColumnHeaders.Clear();
    clicked.push_back(header.Text);
  };
  events.list.ClickColumn(2);
  EXPECT_EQ(clicked, std::vector<std::string>{"Where?"}) << "a handler may replace the columns";
  for (const int column : {0, 1, -1})
    EXPECT_EQ(FailureOf([&] { events.list.ClickColumn(column); }), 9) << column;
}

TEST(ListView, LetsARowBeEditedUnlessAHandlerCancelsThat) {
  Events events;
  EXPECT_TRUE(events.list.AllowsLabelEdit());
  events.list.BeforeLabelEdit = [](Integer &cancel) { EXPECT_EQ(cancel, 0); };
  EXPECT_TRUE(events.list.AllowsLabelEdit());
  events.list.BeforeLabelEdit = [](Integer &cancel) { cancel = 1; };
  EXPECT_FALSE(events.list.AllowsLabelEdit());
}

TEST(ListColumns, AreReplacedOneByOne) {
  Events events;
  RowWatcher watcher;
  events.list.WatchRows(&watcher);
  events.list.ColumnHeaders.Clear();
  EXPECT_EQ(events.list.ColumnHeaders.Count(), 0);
  events.list.ColumnHeaders.Add("Date");
  events.list.ColumnHeaders.Add("", 1.0F);
  EXPECT_EQ(events.list.ColumnHeaders(1).Text, "Date");
  EXPECT_FALSE(events.list.ColumnHeaders(1).Width.has_value());
  EXPECT_EQ(events.list.ColumnHeaders(2).Width, 1.0F);
  EXPECT_THROW(events.list.ColumnHeaders(0), RuntimeError);
  EXPECT_THROW(events.list.ColumnHeaders(3), RuntimeError);
  EXPECT_EQ(watcher.seen, (std::vector<std::string>{"columns", "columns", "columns"}));
}

}  // namespace
}  // namespace borvane
