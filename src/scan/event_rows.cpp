#include "scan/event_rows.h"

#include <optional>
#include <span>
#include <vector>

#include "alert/quake_alert.h"
#include "basic/date.h"
#include "records/frmRecords.h"
#include "scan/biggest_event.h"

namespace borvane {

namespace {

std::vector<ColumnHeader> ColumnsOf(std::int32_t family) {
  constexpr float place_width = 5400;
  constexpr float link_width = 1;
  switch (family) {
    case columns_of_region_table:
      return {{"Magnitude", {}}, {"Time and Date", {}}, {"Where?", {}}, {"Map", {}},
              {"Lat", {}},       {"Lon", {}},           {"Depth", {}}};
    case columns_until_first_scan:
      return RecordsForm::FirstColumns();
    case columns_of_events:
      return {{"Magnitude", {}},       {"Date", {}},      {"Time", {}},
              {"Latitude", {}},        {"Longitude", {}}, {"Depth (km)", {}},
              {"Where?", place_width}, {"", link_width}};
    default:
      return {};
  }
}

}  // namespace

void SetupColumns(const std::int32_t &family) {
  ListView &list = frmRecords->ListView1;
  list.ListItems.Clear();
  list.ColumnHeaders.Clear();

  for (const ColumnHeader &column : ColumnsOf(family))
    list.ColumnHeaders.Add(column.Text, column.Width);
}

void AddEventRow(std::string_view /*ignored*/, EventFields &fields) {
  ListView &newest = frmRecords->ListView2;
  newest.ListItems.SetText(1, fields(1));

  newest.ListItems.SetSubItem(1, 1, fields(7));

  newest.ListItems.SetSubItem(1, 2, std::string(fields(3)) + ", " + FormatDate(fields(2), "ddd dd"));

  newest.ToolTipText = FormatDate(fields(2), "mmm ddd dd, yyyy");

  if (!fields(4).empty())
    CheckEventAlert(fields);
}

void ListEvent(EventFields &fields) {
  constexpr int last_slot = 8;
  ListRows &rows = frmRecords->ListView1.ListItems;
  rows.Add({.Text = std::string(fields(1)), .SubItemTexts = PackedTexts(fields.Slots(2, last_slot))});

  // Meant (first-row-is-the-newest): the newest event should be found by its date. It is the first row of the page:
  // dates are text here, and pages list the newest event first.
  if (rows.Count() == 1)
    AddEventRow(fields(2), fields);

  KeepBiggest(fields);
}

}  // namespace borvane
