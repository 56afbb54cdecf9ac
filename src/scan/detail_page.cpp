#include "scan/detail_page.h"

#include "basic/number.h"
#include "basic/text.h"
#include "core/program.h"
#include "feed/http_client.h"
#include "records/frmRecords.h"
#include "settings/conffrm.h"

namespace borvane {

namespace {

/// The text between the character `distance` characters after the start of `label` and the next "<".
std::string_view ValueOf(std::string_view label, int distance, const std::string &page) {
  // Meant (event-page-value-at-a-fixed-distance): the value should be looked for after its label. It is taken from a
  // fixed distance, whatever is there, which is that of the label and the markup after it.

  // Meant (event-page-beyond-sixteen-bits): a label should be found wherever it is. Positions have 16 bits, and no trap
  // holds an overflow.
  const Integer begin = Integer(Find(page, label)) + distance;
  const Integer end = Find(page, "<", begin);

  // Meant (event-page-without-values-ends-the-program): a page without the value should leave it empty. Without a "<"
  // the length is negative, also on the empty page that a failed fetch returns, and no trap holds that.
  return Piece(page, begin, end - begin);
}

}  // namespace

std::string FetchDetailPage(const std::string &address) {
  try {
    if (HttpClientFree() == flag_false)
      return {};
    return conffrm->Inet1.OpenURL(address);
  } catch (const RuntimeError &) {
    return {};
  }
}

void ScanLatLon(const std::string &page, const Integer &mode, float &latitude, float &longitude) {
  if (mode != read_coordinates)
    return;

  constexpr int distance_of_latitude = 19;
  latitude = SinglePrefix(ValueOf("Latitude:", distance_of_latitude, page));

  constexpr int distance_of_longitude = 20;
  longitude = SinglePrefix(ValueOf("Longitude:", distance_of_longitude, page));

  // Meant (coordinates-go-to-the-row-selected-then): the row should be the one whose page was fetched. It is the one
  // that is selected now, and events ran during the fetch.
  ListView &list = frmRecords->ListView1;
  const int row = list.SelectedRow();
  // Meant (region-coordinates-follow-the-region): numbers that are read back should have a point. They have the
  // region's decimal separator, and reading ends at a comma.
  const char separator = platform().region.DecimalSeparator();
  list.ListItems.SetSubItem(row, 4, SingleText(latitude, separator));
  list.ListItems.SetSubItem(row, 5, SingleText(longitude, separator));
}

std::string ScanDepth(const std::string &page) {
  constexpr int distance_of_depth = 16;
  return std::string(ValueOf("Depth:", distance_of_depth, page));
}

}  // namespace borvane
