#include "catalogue/geojson_reader.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "basic/number.h"
#include "pages/area_page.h"
#include "pages/event_page.h"
#include "pages/figures.h"
#include "support/mirror/read_as.h"
#include "support/plain_scanners.h"

// Any text as a catalogue: what is read as an event is one, and every page that is made from it can be read back.

namespace {

using namespace borvane;
using namespace borvane::mirror;

void Require(bool fact) {
  if (!fact)
    std::abort();
}

void CheckEvent(const Event &event) {
  Require(IsEventId(event.id));
  Require(IsOriginTime(static_cast<double>(event.origin_time)));
  Require(std::abs(event.latitude) <= 90 && std::abs(event.longitude) <= 180);
  Require(!event.magnitude || PlausibleMagnitude(*event.magnitude));
  Require(!event.depth || PlausibleDepth(*event.depth));
}

void CheckRow(ListForm form, const plain::Row &row, const Event &event) {
  const std::string link = "recenteqs/Quakes/" + event.id.toStdString() + ".html";
  if (form == ListForm::Region) {
    Require(row[plain::region_column::link] == "http://fuzz.localhost/" + link);
    Require(row[plain::region_column::moment].size() == 19);
  } else {
    Require(row[plain::column::link] == link);
    Require(row[plain::column::date].size() == 10 && row[plain::column::time].size() == 8);
  }
  Require(row[plain::column::magnitude] == MagnitudeText(event.magnitude.value()).toStdString());
}

/// Every event with a magnitude is a row, in the order of the catalogue, and the scan ends normally. The table of a
/// region has the newest of them alone.
void CheckListPage(ListForm form, const Catalogue &catalogue) {
  const plain::ScanResult scan = ReadAs(form, AreaPage(AnywhereWith(form), catalogue, "fuzz.localhost").toStdString());
  Require(scan.failure == 0);
  std::size_t row = 0;
  for (const Event &event : catalogue.events()) {
    if (!event.magnitude)
      continue;
    Require(row < scan.rows.size());
    CheckRow(form, scan.rows[row], event);
    ++row;
    if (form == ListForm::Region)
      break;
  }
  Require(row == scan.rows.size());
}

void CheckEventPage(const Event &event, const Catalogue &catalogue) {
  const QByteArray page = EventPage(event, catalogue, PageHost("", 1));
  const plain::EventPage read = plain::ReadEventPage(page.toStdString());
  Require(read.coordinates_failure == 0 && read.depth_failure == 0);
  Require(read.latitude == SinglePrefix(SignedDegreesText(event.latitude).toStdString()));
  Require(read.longitude == SinglePrefix(SignedDegreesText(event.longitude).toStdString()));
  Require(page.count("<script") == 0 && page.count("</title>") == 1 && page.endsWith("</html>"));
  Require(!page.contains('\0'));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const CatalogueReading reading =
      ReadGeoJson(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
  Require(reading.fault.isEmpty() || (reading.events.empty() && reading.left_out == 0));
  for (const Event &event : reading.events)
    CheckEvent(event);
  const Catalogue catalogue(reading.events);
  for (const ListForm form :
       {ListForm::Quakes, ListForm::MapList, ListForm::MapAnchor, ListForm::World, ListForm::Region})
    CheckListPage(form, catalogue);
  if (!catalogue.events().empty())
    CheckEventPage(catalogue.events().front(), catalogue);
  return 0;
}
