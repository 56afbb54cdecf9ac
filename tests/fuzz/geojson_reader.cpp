#include "catalogue/geojson_reader.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "pages/event_page.h"
#include "pages/quakes_page.h"
#include "support/mirror/quakes_list_reader.h"

// Any text as a catalogue: what is read as an event is one, and every page that is made from it can be read back.

namespace {

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

/// Every event with a magnitude is a row, in the order of the catalogue, and the scan ends normally.
void CheckListPage(const Catalogue &catalogue) {
  const QByteArray page =
      QuakesPage("Fuzz", ListEvents(catalogue, [](const Event &event) { return event.magnitude.has_value(); }));
  const ListReading reading = ReadQuakesList(page.toStdString());
  Require(reading.fault.empty());
  std::size_t row = 0;
  for (const Event &event : catalogue.events()) {
    if (!event.magnitude)
      continue;
    Require(row < reading.rows.size());
    Require(reading.rows[row].link == "recenteqs/Quakes/" + event.id.toStdString() + ".html");
    Require(reading.rows[row].date.size() == 10 && reading.rows[row].time.size() == 8);
    ++row;
  }
  Require(row == reading.rows.size());
}

void CheckEventPage(const Event &event, const Catalogue &catalogue) {
  const QByteArray page = EventPage(event, catalogue, 1);
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
  CheckListPage(catalogue);
  if (!catalogue.events().empty())
    CheckEventPage(catalogue.events().front(), catalogue);
  return 0;
}
