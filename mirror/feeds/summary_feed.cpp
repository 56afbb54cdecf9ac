#include "feeds/summary_feed.h"

#include <QByteArrayView>
#include <algorithm>
#include <cstdint>

#include "catalogue/geojson_reader.h"

namespace borvane::mirror {

namespace {

constexpr qint64 day_ms = 24LL * 60 * 60 * 1000;
constexpr qsizetype most_ids = 32;  // of one event; the most that real ones have is about ten

// A text of small values takes thirteen times its size more when it is read. A real feature has about forty.
constexpr qsizetype most_values = most_feed_events * 50;

bool HasTooManyValues(QByteArrayView text) {
  // So many are counted in a byte, which a processor does for many at a time.
  constexpr qsizetype block = 255;
  qsizetype values = 0;
  while (!text.isEmpty()) {
    const QByteArrayView counted = text.first(std::min(block, text.size()));
    std::uint8_t separators = 0;
    for (const char c : counted)
      separators = static_cast<std::uint8_t>(separators + (c == ',' || c == '[' || c == '{' ? 1 : 0));
    values += separators;
    text = text.sliced(counted.size());
  }
  return values > most_values;
}

/// The number as milliseconds since 1970; 0 when it is no plausible time.
qint64 TimeOf(const std::optional<double> &number) {
  return number && IsOriginTime(*number) ? static_cast<qint64>(*number) : 0;
}

/// What is wrong with a feed that says this of itself; empty for nothing.
QString MetadataFault(const CollectionMetadata &metadata, qsizetype events, qint64 now) {
  constexpr int good_status = 200;
  const qint64 generated = TimeOf(metadata.generated);
  if (generated == 0)
    return "it does not say when it was made";
  if (QString fault = FaultOfTime(generated, now); !fault.isEmpty())
    return fault;
  if (metadata.status.value_or(good_status) != good_status)
    return QString("its status is %1").arg(*metadata.status);
  if (metadata.count && *metadata.count != static_cast<double>(events))
    return QString("it announces %1 events and has %2").arg(*metadata.count).arg(events);
  return {};
}

/// All ids of a feature: `own` in front, then those in a text such as ",ci38592402,us7000abcd,".
QStringList IdsOf(const Feature &feature, const QString &own) {
  QStringList ids;
  if (IsEventId(own))
    ids += own;
  for (std::string_view rest = feature.ids; !rest.empty() && ids.size() < most_ids;) {
    const std::string_view part = rest.substr(0, rest.find(','));
    rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    if (part.empty() || part == feature.id)
      continue;
    const QString id = QString::fromUtf8(part);
    if (IsEventId(id) && !ids.contains(id))
      ids += id;
  }
  return ids;
}

std::optional<FeedEvent> ReadFeedFeature(const Feature &feature, qint64 generated, SharedTexts &shared) {
  FeedEvent read;
  read.deleted = feature.status == "deleted";
  if (read.deleted) {
    read.event.id = QString::fromUtf8(feature.id);
    if (!IsEventId(read.event.id))
      return std::nullopt;
  } else {
    std::optional<Event> event = EventOf(feature, shared);
    if (!event || event->origin_time > generated + day_ms)
      return std::nullopt;
    read.event = std::move(*event);
  }
  // A revision of the future would never be replaced.
  read.updated = std::min(TimeOf(feature.updated), generated);
  read.ids = IdsOf(feature, read.event.id);
  return read;
}

}  // namespace

FeedReading ReadSummaryFeed(const QByteArray &text, qint64 now) {
  if (HasTooManyValues(text))
    return FaultyReading(QString("more values than a feed of %1 events has").arg(most_feed_events));
  const FeatureCollection collection(text);
  if (!collection.fault().isEmpty())
    return FaultyReading(collection.fault());
  if (const QString fault = MetadataFault(collection.metadata(), collection.size(), now); !fault.isEmpty())
    return FaultyReading(fault);
  if (collection.size() > most_feed_events)
    return FaultyReading(QString("more than %1 events").arg(most_feed_events));

  FeedReading reading;
  reading.generated = TimeOf(collection.metadata().generated);
  reading.events.reserve(static_cast<std::size_t>(collection.size()));
  SharedTexts shared;
  collection.ForEach([&](const Feature &feature) {
    if (std::optional<FeedEvent> event = ReadFeedFeature(feature, reading.generated, shared))
      reading.events.push_back(std::move(*event));
    else
      LeaveOut(reading, IdsOf(feature, QString::fromUtf8(feature.id)));
  });
  return FinishReading(std::move(reading));
}

}  // namespace borvane::mirror
