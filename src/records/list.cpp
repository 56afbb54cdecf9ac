// What the list of events does once a page has filled it.

#include <algorithm>

#include "basic/number.h"
#include "core/program.h"
#include "records/frmRecords.h"
#include "records/links.h"
#include "scan/detail_page.h"
#include "settings/values.h"

namespace borvane {

void RecordsForm::ListView1_BeforeLabelEdit(Integer &cancel) { cancel = 1; }

void RecordsForm::ListView1_ColumnClick(const ColumnHeader &header) {
  // Meant (sorts-by-text): magnitudes should be sorted as numbers, dates as dates. All is text in the list, and is
  // sorted as such: 10.0 comes before 2.0.
  ListView1.Sorted = true;

  // Meant (first-of-equal-titles-sorts): the column that was clicked should be the one that sorts. It is looked for by
  // its title, and the columns until the first refresh have "Distance" and "Unit" twice.
  int column = 1;
  while (column <= ListView1.ColumnHeaders.Count() && ListView1.ColumnHeaders(column).Text != header.Text)
    ++column;
  // Meant (sort-stays-at-its-place): the chosen column should stay the one that sorts. Its place is kept, and another
  // area's list has another column there, or none.
  ListView1.SortKey = column - 1;

  // Meant (any-title-flips-the-order): a column that is clicked for the first time should be sorted in ascending order.
  // Each click flips the order that there is, whichever column it chooses.
  ListView1.SortOrder = ListView1.SortOrder() == ListView::ascending ? ListView::descending : ListView::ascending;

  ListView1.ListItems.PlaceRows();
}

void RecordsForm::ListView1_MouseUp(const MouseState &mouse) {
  const bool is_region = IsRegionFamily();

  if (ListView1.ListItems.Count() == 0)
    return;

  // Meant (click-beside-the-rows-reads-the-selected-one): a click below the rows should do nothing. It has the selected
  // row's figures shown or its menu opened, like a click on that row.
  if (mouse.button == left_button)
    ReadOutSelectedRow(is_region);
  else if (mouse.button == right_button)
    OpenListMenu();
}

/// Shows depth and place of the selected row in the status bar. A row of the region's table gets them from the event's
/// page first.
void RecordsForm::ReadOutSelectedRow(bool is_region) {
  ListRows &rows = ListView1.ListItems;
  const int row = ListView1.SelectedRow();

  float latitude = 0;
  float longitude = 0;
  int depth_column = 5;
  if (is_region) {
    // Meant (click-fetches-again): a row that has its figures should show them, as the map does. Each click fetches the
    // page.
    // Meant (click-on-a-waiting-event-ends-the-program): a second click should wait or do nothing. It takes the client
    // over, as any request does, and the first click gets no page.
    const std::string page = FetchDetailPage(std::string(rows(row).SubItems(3)));
    ScanLatLon(page, read_coordinates, latitude, longitude);
    depth_column = 6;
    rows.SetSubItem(row, depth_column, ScanDepth(page));
  } else {
    latitude = SinglePrefix(rows(row).SubItems(3));
    longitude = SinglePrefix(rows(row).SubItems(4));
  }
  StatusBar1.Panels(1).Text = "Depth: " + std::string(rows(row).SubItems(depth_column));

  // Meant (read-out-replaces-last-refresh): the panel should keep the time of the last refresh. Both have this panel,
  // and the later one is shown.
  const char separator = platform().region.DecimalSeparator();
  StatusBar1.Panels(2).Text =
      "latitude: " + SingleText(latitude, separator) + "    longitude: " + SingleText(longitude, separator);
}

/// Opens the menu of the selected row. Weak events have no reports.
void RecordsForm::OpenListMenu() {
  constexpr double least_reported_magnitude = 3.0;
  const bool has_reports = NumericPrefix(ListView1.SelectedItem().Text) >= least_reported_magnitude;
  mnuReportIt.Enabled = has_reports;
  mnuViewReps.Enabled = has_reports;

  // Meant (menu-outlives-its-row): an entry should be about the row that was clicked. The refresh goes on while the
  // menu is open, and the entry is about the row that is selected when it is chosen.
  PopupMenu(Tmnu);
}

void RecordsForm::mnuGrid_Click() {
  mnuGrid.Checked = !mnuGrid.Checked();

  ListView1.GridLines = mnuGrid.Checked();

  SaveSetting(Setting::Grid, mnuGrid.Checked() ? "1" : "0");
}

std::string RecordsForm::MakeEventKey() const {
  const ListItem &selected = ListView1.SelectedItem();

  std::string key = selected.Text;
  for (int number = 1; number <= 4; ++number)
    key.append("-").append(selected.SubItems(number));

  std::replace(key.begin(), key.end(), '/', ':');
  return key;
}

}  // namespace borvane
