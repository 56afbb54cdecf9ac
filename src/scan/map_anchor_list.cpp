#include "basic/integer.h"
#include "basic/text.h"
#include "scan/event_rows.h"
#include "scan/page_reader.h"
#include "scan/scanners.h"

namespace borvane {

namespace {

/// Reads the rows of a map anchor list one by one.
class MapAnchorListReader : public PageReader {
 public:
  explicit MapAnchorListReader(std::string &page) : PageReader(page, map_anchor_list_bound) {}

  /// Reads the next row into the fields; returns false when there is none. A row that the offsets do not fit raises a
  /// failure.
  bool ReadRow() {
    // Meant (map-anchor-marker-anywhere): only a cell of a row should count. Any "MAP<" does, such as one in a heading.
    const Integer marker = text_.Find(marker_);

    // Meant (map-anchor-end-needs-a-near-tag): without a marker nothing should be searched any more. The magnitude's
    // end is, and it fails where it lies beyond 16 bits.
    const Integer end = text_.Find(less_, marker + 28);
    if (marker == 0)
      return false;

    ReadMagnitudeAndLink(marker, end);
    ReadTokens();
    ReadDepthAndPlace();
    return true;
  }

 private:
  void ReadMagnitudeAndLink(Integer marker, Integer end) {
    // Meant (tags-are-skipped-by-their-length): here as in the other map lists. The marker and the tags after it are 29
    // characters.
    fields_(1) = Trim(text_.Piece(marker + 29, end - marker - 29));

    // Meant (map-anchor-link-keeps-its-slash): the link should have no slash in front, like those of the other lists.
    // What is skipped is "<A HREF=" and the quote, so that only a link written without a slash joins the site's root.
    const Integer greater = text_.Find(greater_, end);
    fields_(8) = text_.Piece(end + 9, greater - end - 10);

    text_.TakeRest(greater + 1);
  }

  void ReadTokens() {
    // Meant (two-blanks-shift-the-fields): here as in the other lists.
    for (int slot = 2; slot <= 5; ++slot) {
      const Integer blank = text_.Find(blank_);
      fields_(slot) = Trim(text_.Piece(1, blank - 1));
      text_.TakeRest(blank + 1);
    }
  }

  void ReadDepthAndPlace() {
    const Integer end_of_depth = text_.Find(less_);
    fields_(6) = Trim(text_.Piece(1, end_of_depth - 1));

    // Meant (tags-are-skipped-by-their-length): the depth's tag is four characters.
    const Integer end_of_place = text_.Find(less_, end_of_depth + 1);
    fields_(7) = Trim(text_.Piece(end_of_depth + 4, end_of_place - end_of_depth - 4));
  }

  Marker marker_{"MAP<"};
  Marker less_{"<"};
  Marker greater_{">"};
  Marker blank_{" "};
};

}  // namespace

void ScanMapAnchorList(Integer & /*mode*/, std::string &page) {
  SetupColumns(columns_of_events);
  ListEvents<MapAnchorListReader>(page);
}

}  // namespace borvane
