#include "basic/integer.h"
#include "basic/text.h"
#include "scan/event_rows.h"
#include "scan/page_reader.h"
#include "scan/scanners.h"

namespace borvane {

namespace {

/// Reads the rows of a map list one by one.
class MapListReader : public PageReader {
 public:
  explicit MapListReader(std::string &page) : PageReader(page, map_list_bound) {}

  /// Reads the next row into the fields; returns false when there is none. A row that the offsets do not fit raises a
  /// failure.
  bool ReadRow() {
    if (!CutToMagnitude())
      return false;
    ReadMagnitude();
    ReadLink();
    ReadTokens();
    ReadDepthAndPlace();
    return true;
  }

 private:
  /// Cuts what is in front of the next row's magnitude. Returns false when there is no further row.
  bool CutToMagnitude() {
    // Meant (map-list-ends-with-its-last-small-marker): rows of both forms should be found. The marker in small letters
    // alone decides whether there is one more, so that rows with the other marker after it are left out.
    Integer begin = text_.Find(small_marker_);
    if (begin == 0)
      return false;

    // Meant (far-capital-marker-fails-the-map-list): only the nearer marker should count. The other one is looked for
    // on all of the page, and its position has to fit 16 bits, too.
    const Integer capital = text_.Find(capital_marker_);

    // Meant (missing-capital-marker-counts-as-position-zero): a marker that is not there should lose. It counts as 0
    // and wins, so that the row is read from near the start of the text, and rows of the small form after the last one
    // of the other form fail.
    constexpr int length_of_marker = 8;
    if (capital < begin)
      begin = Integer(text_.Find(greater_, capital + length_of_marker)) - 6;

    // After ">map</A>", or two characters after the ">" that follows the other marker.
    text_.TakeRest(begin + length_of_marker);
    return true;
  }

  void ReadMagnitude() {
    const Integer less = text_.Find(less_);
    fields_(1) = Trim(text_.Piece(1, less - 1));

    text_.TakeRest(less + 1);
  }

  void ReadLink() {
    // Meant (tags-are-skipped-by-their-length): a tag should be skipped up to its end. Fixed numbers of characters are
    // skipped instead: here the nine of an anchor's head with its slash, and the closing quote.
    const Integer greater = text_.Find(greater_);
    fields_(8) = text_.Piece(10, greater - 11);

    // After that ">". The length of a text has more than 16 bits.
    text_.TakeRest(static_cast<int>(fields_(8).size()) + 12);
  }

  void ReadTokens() {
    // Meant (two-blanks-shift-the-fields): here as in the other lists.
    for (int slot = 2; slot <= 5; ++slot) {
      const Integer blank = text_.Find(blank_);
      fields_(slot) = text_.Piece(1, blank - 1);
      text_.TakeRest(blank + 1);
    }
  }

  void ReadDepthAndPlace() {
    // Meant (tags-are-skipped-by-their-length): as for the link. After each, a tag of four characters and one more.
    constexpr int skipped = 5;
    Integer less = text_.Find(less_);
    fields_(6) = Trim(text_.Piece(1, less - 1));
    text_.TakeRest(less + skipped);

    // Meant (map-list-place-loses-its-last-character): the place should be taken up to its tag. The character in front
    // of the tag is left out; rows have a blank there.
    less = text_.Find(less_);
    fields_(7) = Trim(text_.Piece(1, less - 2));
    text_.TakeRest(less + skipped);
  }

  Marker small_marker_{">map</A>"};
  Marker capital_marker_{">MAP</A>"};
  Marker less_{"<"};
  Marker greater_{">"};
  Marker blank_{" "};
};

}  // namespace

void ScanMapList(Integer & /*mode*/, std::string &page) {
  SetupColumns(columns_of_events);
  ListEvents<MapListReader>(page);
}

}  // namespace borvane
