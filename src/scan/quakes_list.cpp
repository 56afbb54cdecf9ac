#include "basic/integer.h"
#include "basic/text.h"
#include "scan/event_rows.h"
#include "scan/page_reader.h"
#include "scan/scanners.h"

namespace borvane {

namespace {

/// Reads the rows of a regional list one by one.
class QuakesListReader : public PageReader {
 public:
  explicit QuakesListReader(std::string &page) : PageReader(page, quakes_list_bound) {}

  /// Reads the next row into the fields; returns false when there is none. A row that the offsets do not fit raises a
  /// failure.
  bool ReadRow() {
    // Meant (row-beyond-sixteen-bits): a row should be found wherever it is. Positions have 16 bits, so that a first
    // row after 32767 characters, or as wide a gap between two rows, fails the scan.
    const Integer marker = text_.Find(link_);
    if (marker == 0)
      return false;
    ReadMagnitude(marker);
    ReadLink();
    ReadTokensAndDepth();
    ReadPlace();
    return true;
  }

 private:
  void ReadMagnitude(Integer marker) {
    // The magnitude begins at most 15 characters before the marker.
    const Integer begin = marker - 15;
    const Integer blank = text_.Find(blank_, begin + 1);
    fields_(1) = Trim(text_.Piece(begin, blank - begin));

    text_.TakeRest(blank + 1);
  }

  void ReadLink() {
    // Without its opening quote and slash and its closing quote.
    const Integer equals = text_.Find(equals_);
    tag_end_ = text_.Find(greater_, equals + 1);
    fields_(8) = text_.Piece(equals + 3, tag_end_ - equals - 4);
  }

  void ReadTokensAndDepth() {
    // Meant (two-blanks-shift-the-fields): date, time, latitude and longitude are separated by blanks, and a run of
    // them should count as one. Each counts, so that two make an empty field and shift the ones that follow.
    Integer end = tag_end_;
    for (int slot = 2; slot <= 5; ++slot) {
      text_.TakeRest(end + 1);
      end = text_.Find(blank_);
      fields_(slot) = text_.Piece(1, end - 1);
    }

    const Integer less = text_.Find(less_);
    fields_(6) = text_.Piece(end + 1, less - end - 1);

    text_.TakeRest(less + 1);
  }

  void ReadPlace() {
    const Integer begin = text_.Find(greater_);
    Integer end = text_.Find(line_feed_);
    // Meant (missing-tag-counts-as-position-zero): a "<" that is not there should lose against the line feed. It counts
    // as 0 and wins, so that a page ending with its last row's line feed fails in that row.
    if (text_.Find(less_) < end)
      end = text_.Find(less_);

    // Meant (place-length-is-fixed-allowance): the length should be taken from where the place begins. The 4 is what a
    // closing tag "/A>" leaves; after any other tag the place is longer or shorter by the difference.
    fields_(7) = Trim(text_.Piece(begin + 1, end - 4));
  }

  Integer tag_end_;
  Marker link_{"/recenteqs/Quakes/"};
  Marker blank_{" "};
  Marker equals_{"="};
  Marker greater_{">"};
  Marker less_{"<"};
  Marker line_feed_{"\n"};
};

}  // namespace

void ScanQuakesList(Integer & /*mode*/, std::string &page) {
  SetupColumns(columns_of_events);
  ListEvents<QuakesListReader>(page);
}

}  // namespace borvane
