#include "basic/integer.h"
#include "basic/text.h"
#include "records/frmRecords.h"
#include "scan/biggest_event.h"
#include "scan/event_rows.h"
#include "scan/page_reader.h"
#include "scan/scanners.h"

namespace borvane {

namespace {

/// Reads the rows of a region's table one by one. Its slots are those of its three links: 1 date and time, 2 magnitude,
/// 3 place, 4 address.
class RegionTableReader : public PageReader {
 public:
  explicit RegionTableReader(std::string &page) : PageReader(page, region_table_bound) {}

  /// The position of the table's heading; 0 when there is none.
  Integer Heading() { return text_.Find(heading_); }

  /// Cuts the page in front of the rows.
  void CutToRows(Integer heading) { text_.TakeRest(heading + 1); }

  /// Reads a row into the fields. A row that the offsets do not fit raises a failure.
  void ReadRow() {
    for (int slot = 1; slot <= 3; ++slot) {
      // From after the quote to the letters "html". The third link's address remains.
      const Integer href = text_.Find(href_);
      end_of_address_ = text_.Find(html_);
      fields_(4) = text_.Piece(href + 6, end_of_address_ - href - 2);

      text_.TakeRest(end_of_address_ + 6);

      const Integer less = text_.Find(less_);
      fields_(slot) = text_.Piece(1, less - 1);
    }
  }

  bool IsAtEndOfTable() const {
    // Meant (region-table-end-is-compared-across-a-cut): two positions in one text should be compared. The tag's is one
    // in the text as it is now, that of "html" one in the text before its last cut; and a tag that is not there counts
    // as position 0, which ends the table.
    return text_.Find(end_of_table_) < end_of_address_;
  }

 private:
  Integer end_of_address_;  // where the last "html" began, before the text was cut after it
  Marker heading_{"<td><center>Region</center></td>"};
  Marker href_{"href"};
  Marker html_{"html"};
  Marker less_{"<"};
  mutable Marker end_of_table_{"</table>"};
};

/// Passes the first row on to the upper list.
void PassOn(EventFields &fields) {
  // Meant (region-table-ends-after-one-row): a table of several rows should be read to its end. The first row's
  // magnitude has no blank, and its first word then has a negative length; or it has one, and AddEventRow reads slot 7,
  // which this scanner has not.
  const Integer blank = Find(fields(2), " ");
  const std::string_view word = Piece(fields(2), 1, blank - 1);
  AddEventRow(word, fields);
}

}  // namespace

void ScanRegionTable(Integer & /*mode*/, std::string &page) {
  RegionTableReader reader(page);

  // Meant (region-page-without-its-table-keeps-the-list): the list should be emptied first, as by the other scanners.
  // On a page without the heading it keeps its rows and columns, those of another area, too.
  const Integer heading = reader.Heading();
  if (heading == 0)
    return;

  SetupColumns(columns_of_region_table);

  reader.CutToRows(heading);

  ListView &list = frmRecords->ListView1;
  EventFields &fields = reader.fields();
  do {
    reader.ReadRow();

    list.ListItems.Add({.Text = std::string(fields(2)), .SubItemTexts = {fields(1), fields(3), fields(4)}});

    // Meant (single-region-event-is-listed-only): the only row of a table should be passed on like that of any other
    // list. The end of the table is tested before, so that the upper list, the alert and the strongest event stay as
    // they are.
    if (reader.IsAtEndOfTable())
      break;

    if (list.ListItems.Count() == 1)
      PassOn(fields);

    KeepBiggest(fields);
  } while (!reader.IsAtEnd());

  list.ColumnHeaders.SetWidth(2, 5000);
  list.ColumnHeaders.SetWidth(3, 5300);
  list.ColumnHeaders.SetWidth(4, 1);
}

}  // namespace borvane
