#include "basic/integer.h"
#include "basic/text.h"
#include "core/module1.h"
#include "records/frmRecords.h"
#include "scan/event_rows.h"
#include "scan/page_reader.h"
#include "scan/scanners.h"

namespace borvane {

namespace {

/// Reads the rows of a world list one by one.
class WorldListReader : public PageReader {
 public:
  explicit WorldListReader(std::string &page) : PageReader(page, world_list_bound) {}

  /// Reads the next row into the fields; returns false when there is none. A row that the offsets do not fit raises a
  /// failure.
  bool ReadRow() {
    // Meant (world-list-without-map-fails): a page without a further "MAP" should end the scan normally. The search
    // that follows starts at its position, and position 0 fails it.
    const Integer map = text_.Find(map_);
    const Integer cell = text_.Find(cell_, map);
    if (cell == 0)
      return false;

    ReadMagnitude(cell);
    ReadLink();
    ReadDateAndTime();
    ReadNumbers();
    ReadPlace();
    return true;
  }

 private:
  static constexpr int length_of_marker = 7;  // of "nowrap>" and of "strong>"

  /// The markers of a value in bold or in bold and coloured. Each has the memory of one search, since a place may be
  /// far in front of what is read next.
  struct BoldValue {
    Marker strong{"strong>"};
    Marker end{"<"};
    Marker end_in_color{"<"};
  };

  /// Reads a value in bold, or else in bold and coloured, into the slot; returns the position after it. The search
  /// starts at `from`.
  Integer ReadBoldValue(int slot, Integer from, BoldValue &markers) {
    // Meant (empty-cell-takes-the-next-bold-text): an empty cell should stay empty. The next marker is looked for on
    // all of the page, and may be that of the row's place or of a later row.
    const Integer bold = text_.Find(markers.strong, from);
    Integer end = text_.Find(markers.end, bold);
    fields_(slot) = Trim(text_.Piece(bold + length_of_marker, end - bold - length_of_marker));

    if (fields_(slot).empty()) {
      // Meant (tags-are-skipped-by-their-length): here as in the map lists. The marker and the tag of the colour are 29
      // characters.
      const Integer colored = bold + 29;
      end = text_.Find(markers.end_in_color, colored);
      fields_(slot) = Trim(text_.Piece(colored, end - colored));
    }
    return end;
  }

  void ReadMagnitude(Integer cell) {
    Integer end = text_.Find(less_, cell);
    fields_(1) = Trim(text_.Piece(cell + length_of_marker, end - cell - length_of_marker));
    if (fields_(1).empty())
      end = ReadBoldValue(1, cell, bold_magnitude_);

    text_.TakeRest(end + 1);
  }

  void ReadLink() {
    // Without "href=", its quotes and its slash.
    const Integer href = text_.Find(href_);
    const Integer greater = text_.Find(greater_, href);
    fields_(8) = text_.Piece(href + 7, greater - href - 8);

    text_.TakeRest(greater + 1);
  }

  void ReadDateAndTime() {
    const Integer blank = text_.Find(blank_);
    const Integer end = text_.Find(end_of_time_, blank);
    fields_(2) = text_.Piece(1, blank - 1);
    fields_(3) = text_.Piece(blank + 1, end - blank - 1);
  }

  void ReadNumbers() {
    for (int slot = 4; slot <= 6; ++slot) {
      // Meant (world-list-cells-begin-with-a-tag): the value should be right after the marker. It is after the next
      // ">", since each cell begins with a further tag; a value without one is skipped.
      const Integer begin = Integer(text_.Find(cell_)) + length_of_marker + 1;
      const Integer greater = text_.Find(greater_, begin);
      const Integer end = text_.Find(less_, greater);
      fields_(slot) = Trim(text_.Piece(greater + 1, end - greater - 1));

      text_.TakeRest(end + 1);
    }
  }

  void ReadPlace() {
    // The place is not trimmed unless it is bold.
    const Integer begin = Integer(text_.Find(place_cell_)) + 4;
    const Integer end = text_.Find(end_of_place_, begin);
    fields_(7) = text_.Piece(begin, end - begin);
    if (fields_(7).empty())
      ReadBoldValue(7, begin, bold_place_);
  }

  Marker map_{"MAP"};
  Marker cell_{"nowrap>"};
  Marker href_{"href="};
  Marker place_cell_{"<td>"};
  Marker blank_{" "};
  Marker greater_{">"};
  Marker less_{"<"};
  // Nothing is cut after the time and the place, and both may be far in front of what is read next: their ends have
  // memories of their own.
  Marker end_of_time_{"<"};
  Marker end_of_place_{"<"};
  BoldValue bold_magnitude_;
  BoldValue bold_place_;
};

void WriteHeadline(EventFields &fields) {
  Label &headline = frmRecords->Label3;
  std::string caption = "Mag: ";
  caption.append(fields(1)).append("  Where: ").append(fields(7)).append("  Time: ").append(fields(3));
  headline.Caption = caption;

  // Meant (headline-leads-to-the-areas-host): the link should be joined to the host of the world page. It is joined to
  // that of the area that the list shows.
  headline.Tag = Module1->SiteRoot + std::string(fields(8));

  headline.ToolTipText = "Right click for options";
}

}  // namespace

void ScanWorldList(Integer & /*mode*/, std::string &page) {
  if (Module1->GlobalScanFlag == flag_false)
    SetupColumns(columns_of_events);

  WorldListReader reader(page);
  while (reader.ReadRow()) {
    // Meant (world-refresh-fills-the-headline): a refresh of the list should fill the list. The flag of a headline that
    // failed is still set, and the first row becomes the headline.
    if (Module1->GlobalScanFlag != flag_false) {
      WriteHeadline(reader.fields());
      return;
    }

    ListEvent(reader.fields());

    if (reader.IsAtEnd())
      return;
  }
}

}  // namespace borvane
