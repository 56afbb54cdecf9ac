#include "scan/event_rows.h"

#include <gtest/gtest.h>

#include "support/failure_of.h"
#include "support/program/alert_rig.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

/// The columns of the list, by title and width: "Magnitude", "Where? 5400".
Lines Columns() {
  Lines columns;
  for (int column = 1; column <= frmRecords->ListView1.ColumnHeaders.Count(); ++column) {
    const ColumnHeader &header = frmRecords->ListView1.ColumnHeaders(column);
    columns.push_back(header.Text + (header.Width ? " " + SingleText(*header.Width) : ""));
  }
  return columns;
}

const Lines first_columns = {"Magnitude", "Date",     "Time", "Latitude",  "Longitude",   "Depth (km)", "Distance",
                             "Unit",      "Distance", "Unit", "Direction", "Where? 5400", " 1"};

TEST(SetupColumns, SetsTheSevenColumnsOfTheRegionTable) {
  Rig rig;
  SetupColumns(0);
  EXPECT_EQ(Columns(), (Lines{"Magnitude", "Time and Date", "Where?", "Map", "Lat", "Lon", "Depth"}));
}

TEST(SetupColumns, RestoresTheFirstColumnsOfTheList) {
  Rig rig;
  EXPECT_EQ(Columns(), first_columns) << "those of the design";
  SetupColumns(2);
  SetupColumns(1);
  EXPECT_EQ(Columns(), first_columns);
}

TEST(SetupColumns, SetsTheEightColumnsOfEvents) {
  Rig rig;
  SetupColumns(2);
  EXPECT_EQ(Columns(),
            (Lines{"Magnitude", "Date", "Time", "Latitude", "Longitude", "Depth (km)", "Where? 5400", " 1"}));
}

TEST(SetupColumns, SetsNoColumnsForAnyOtherFamily) {
  for (const int family : {-1, 3, 70000}) {
    Rig rig;
    SetupColumns(family);
    EXPECT_EQ(Columns(), Lines{}) << family;
  }
}

TEST(SetupColumns, EmptiesTheListForEveryFamily) {
  for (const int family : {0, 1, 2, 3}) {
    Rig rig;
    frmRecords->ListView1.ListItems.Add({"2.0", {}});
    SetupColumns(family);
    EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 0) << family;
    EXPECT_EQ(frmRecords->ListView2.ListItems.Count(), 1) << family;
  }
}

TEST(SetupColumns, EmptiesTheRowsBeforeTheColumns) {
  Rig rig;
  SetupColumns(2);
  struct Watcher : ListWatcher {
    Lines seen;
    void RowAdded(int /*row*/) override { seen.emplace_back("added"); }
    void RowsMoved() override { seen.emplace_back("moved"); }
    void RowChanged(int /*row*/) override { seen.emplace_back("changed"); }
    void RowsCleared() override { seen.push_back("rows cleared from under " + std::to_string(Columns().size())); }
    void ColumnsChanged() override { seen.push_back(std::to_string(Columns().size())); }
  } watcher;
  frmRecords->ListView1.WatchRows(&watcher);
  SetupColumns(0);
  EXPECT_EQ(watcher.seen, (Lines{"rows cleared from under 8", "0", "1", "2", "3", "4", "5", "6", "7"}));
  frmRecords->ListView1.WatchRows(nullptr);
}

EventFields Event() {
  EventFields fields(20);
  const char *texts[] = {"2.0", "2018/02/07", "01:26:13", "34.495N", "118.667W", "26.5", "Castaic, CA", "a/b.html"};
  for (int slot = 1; slot <= 8; ++slot)
    fields(slot) = texts[slot - 1];
  return fields;
}

TEST(EventFields, ReturnsConsecutiveSlotsAndRaisesASubscriptFailureOutsideItsBounds) {
  EventFields fields(9);
  fields(9) = "last";
  ASSERT_EQ(fields.Slots(2, 9).size(), 8U);
  EXPECT_EQ(fields.Slots(2, 9)[7], "last");
  for (const auto &[first, last] : {std::pair(-1, 2), std::pair(3, 2), std::pair(2, 10)})
    EXPECT_EQ(FailureOf([&fields, first = first, last = last] { fields.Slots(first, last); }),
              static_cast<int>(Failure::Subscript));
}

TEST(EventFields, RaisesASubscriptFailureOutsideItsBounds) {
  for (const int bound : {20, 10, 4}) {
    EventFields fields(bound);
    EXPECT_EQ(fields.UpperBound(), bound);
    EXPECT_EQ(FailureOf([&] { fields(0) = "x"; }), 0);
    EXPECT_EQ(FailureOf([&] { fields(bound) = "x"; }), 0);
    EXPECT_EQ(FailureOf([&] { fields(bound + 1) = "x"; }), static_cast<int>(Failure::Subscript));
    EXPECT_EQ(FailureOf([&] { fields(-1) = "x"; }), static_cast<int>(Failure::Subscript));
  }
}

void ExpectTheRowOfTheEvent() {
  const ListItem &row = frmRecords->ListView2.ListItems(1);
  EXPECT_EQ(row.Text, "2.0");
  EXPECT_EQ(row.SubItems(1), "Castaic, CA");
  EXPECT_EQ(row.SubItems(2), "01:26:13, Wed 07");
  EXPECT_EQ(frmRecords->ListView2.ToolTipText(), "Feb Wed 07, 2018");
}

TEST(AddEventRow, WritesMagnitudePlaceAndTimeWithTheDay) {
  Rig rig;
  EventFields fields = Event();
  AddEventRow("", fields);
  ExpectTheRowOfTheEvent();
}

TEST(AddEventRow, OverwritesTheOneRow) {
  Rig rig;
  EventFields fields = Event();
  AddEventRow("", fields);
  fields(1) = "3.0";
  AddEventRow("", fields);
  EXPECT_EQ(frmRecords->ListView2.ListItems.Count(), 1);
  EXPECT_EQ(Newest(), "3.0");
}

TEST(AddEventRow, IgnoresItsFirstArgument) {
  Rig rig;
  EventFields fields = Event();
  AddEventRow("1999/01/01", fields);
  EXPECT_EQ(frmRecords->ListView2.ToolTipText(), "Feb Wed 07, 2018");
}

TEST(AddEventRow, KeepsADateThatCannotBeRead) {
  Rig rig;
  for (const char *date : {"yesterday", "", "2018/13/01", "07.02.2018"}) {
    EventFields fields = Event();
    fields(2) = date;
    AddEventRow("", fields);
    EXPECT_EQ(frmRecords->ListView2.ListItems(1).SubItems(2), std::string("01:26:13, ") + date);
    EXPECT_EQ(frmRecords->ListView2.ToolTipText(), date);
  }
}

TEST(AddEventRow, WritesARowWithoutALatitudeToo) {
  Rig rig;
  EventFields fields = Event();
  fields(4) = "";
  AddEventRow("", fields);
  ExpectTheRowOfTheEvent();
}

TEST(AddEventRow, TestsForTheAlertOnlyWithALatitude) {
  AlertRig rig;
  EventFields fields = Event();
  fields(1) = "5.0";
  fields(4) = "";
  AddEventRow("", fields);
  EXPECT_EQ(frmQalert.IfLoaded(), nullptr);
  fields(4) = " ";
  rig.shake(0);
  AddEventRow("", fields);
  EXPECT_EQ(rig.trace({"show"}), Lines{"show frmQalert"});
  EXPECT_EQ(Newest(), "5.0");
}

TEST(AddEventRow, FailsForFieldsWithoutAPlaceAfterTheMagnitude) {
  Rig rig;
  EventFields fields(4);
  fields(1) = "2.0";
  EXPECT_EQ(FailureOf([&] { AddEventRow("", fields); }), static_cast<int>(Failure::Subscript));
  EXPECT_EQ(Newest(), "2.0") << "the first step has been done";
  EXPECT_EQ(frmRecords->ListView2.ListItems(1).SubItems(1), "Area");
}

TEST(ListView2, HasOneRowFromTheLoadOn) {
  Rig rig;
  rig.start();
  ASSERT_EQ(frmRecords->ListView2.ListItems.Count(), 1);
  const ListItem &row = frmRecords->ListView2.ListItems(1);
  EXPECT_EQ(row.Text, "Mag");
  EXPECT_EQ(row.SubItems(1), "Area");
  EXPECT_EQ(row.SubItems(2), "Time Recorded");
}

TEST(ListView2, HasThreeColumnsWithoutTitles) {
  Rig rig;
  const ListColumns &columns = frmRecords->ListView2.ColumnHeaders;
  ASSERT_EQ(columns.Count(), 3);
  for (const auto &[column, width] :
       std::initializer_list<std::pair<int, float>>{{1, 1440.0F}, {2, 6440.0F}, {3, 2440.0F}}) {
    EXPECT_EQ(columns(column).Text, "");
    EXPECT_EQ(columns(column).Width, width);
  }
}

TEST(ListView2, KeepsTheLastEventWhenAPageHasNoRows) {
  WatchingRig rig;
  rig.refresh();
  rig.serve(los_angeles, "nothing here");
  rig.refresh();
  EXPECT_EQ(Newest(), "2.0");
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 0);
  EXPECT_EQ(frmRecords->ListView1.ColumnHeaders.Count(), 8);
}

TEST(ListView2, ShowsTheFirstRowOfThePageWhateverTheDates) {
  RecordProperty("quirk", "first-row-is-the-newest");
  WatchingRig rig;
  const std::string date = "2018/02/07";
  std::string older = Row("1.0");
  older.replace(older.find(date), date.size(), "2018/02/06");
  rig.serve(los_angeles, Page(older + Row("5.0") + Row("3.0")));
  rig.refresh();
  EXPECT_EQ(Newest(), "1.0");
  EXPECT_EQ(frmRecords->ListView2.ToolTipText(), "Feb Tue 06, 2018");
}

}  // namespace
}  // namespace borvane
