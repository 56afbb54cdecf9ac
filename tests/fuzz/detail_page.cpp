#include "scan/detail_page.h"

#include "records/frmRecords.h"
#include "scan_target.h"
#include "support/failure_of.h"

// Any text as an event's page: what is read of it, and how that ends, is the same as by the plain reader.

namespace {

using namespace borvane;

plain::EventPage Read(const std::string &page) {
  ListRows &rows = frmRecords->ListView1.ListItems;
  rows.Clear();
  rows.Add({.Text = "3.8", .SubItemTexts = {"date", "place", "link"}});

  plain::EventPage read;
  float latitude = 0;
  float longitude = 0;
  read.coordinates_failure = FailureOf([&] { ScanLatLon(page, read_coordinates, latitude, longitude); });
  read.latitude = latitude;
  read.longitude = longitude;
  read.depth_failure = FailureOf([&] { read.depth = ScanDepth(page); });

  const bool is_written = !rows(1).SubItems(4).empty() && !rows(1).SubItems(5).empty();
  if (is_written != (read.coordinates_failure == 0))
    std::abort();
  return read;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  constexpr std::size_t longest = 4096;
  if (size > longest)
    return 0;
  static IdleHost host;
  static const Program program(host.Services(), host);
  const std::string page = PageOf(data, size);
  if (Read(page) != plain::ReadEventPage(page))
    std::abort();
  return 0;
}
