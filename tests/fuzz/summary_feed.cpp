#include "feeds/summary_feed.h"

#include <QSet>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "catalogue/geojson_reader.h"

// Any text as a summary feed: it is taken whole or not at all, and what is taken can be kept and shown.

namespace {

using namespace borvane::mirror;

constexpr qint64 now = 1'781'838'300'000;
constexpr qint64 day = 86'400'000;

void Require(bool fact) {
  if (!fact)
    std::abort();
}

void CheckFeedEvent(const FeedEvent &read, qint64 generated) {
  const Event &event = read.event;
  Require(read.updated >= 0 || IsOriginTime(static_cast<double>(read.updated)));
  Require(read.updated <= generated);
  Require(read.ids.value(0) == event.id && read.ids.size() <= 32);
  Require(QSet<QString>(read.ids.begin(), read.ids.end()).size() == read.ids.size());
  for (const QString &id : read.ids)
    Require(IsEventId(id));
  if (read.deleted)
    return;
  Require(IsOriginTime(static_cast<double>(event.origin_time)) && event.origin_time <= generated + day);
  Require(std::abs(event.latitude) <= 90 && std::abs(event.longitude) <= 180);
  Require(!event.magnitude || PlausibleMagnitude(*event.magnitude));
  Require(!event.depth || PlausibleDepth(*event.depth));
  Require(event.place.size() <= 200 && event.network.size() <= 16 && event.kind.size() <= 64);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const QByteArray text(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
  const FeedReading reading = ReadSummaryFeed(text, now);
  if (!reading.fault.isEmpty()) {
    Require(reading.events.empty() && reading.left_out == 0 && reading.unread_ids.isEmpty() && reading.generated == 0);
    return 0;
  }
  Require(std::abs(reading.generated - now) <= day);
  Require(reading.nameless >= 0 && reading.nameless <= reading.left_out);
  Require(reading.unread_ids.size() >= reading.left_out - reading.nameless);
  for (const QString &id : reading.unread_ids)
    Require(IsEventId(id));
  QSet<QString> ids;
  for (const FeedEvent &read : reading.events) {
    CheckFeedEvent(read, reading.generated);
    ids += read.event.id;
  }
  Require(ids.size() == static_cast<qsizetype>(reading.events.size()));

  // The same text as a catalogue has the same features.
  const CatalogueReading catalogue = ReadGeoJson(text);
  Require(catalogue.fault.isEmpty());
  const std::size_t features = catalogue.events.size() + static_cast<std::size_t>(catalogue.left_out);
  Require(reading.events.size() + static_cast<std::size_t>(reading.left_out) <= features);
  return 0;
}
