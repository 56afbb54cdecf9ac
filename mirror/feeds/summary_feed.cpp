#include "feeds/summary_feed.h"

#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>

#include "catalogue/geojson_reader.h"

namespace borvane::mirror {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 day_ms = 24LL * 60 * 60 * 1000;
constexpr qsizetype most_ids = 32;  // of one event; the most that real ones have is about ten

// A text of small values takes twenty times its size when it is read. A real feature has about forty.
constexpr qsizetype most_values = most_feed_events * 50;

bool HasTooManyValues(const QByteArray &text) {
  return std::count_if(text.begin(), text.end(), [](char c) { return c == ',' || c == '[' || c == '{'; }) > most_values;
}

/// The property as milliseconds since 1970; 0 when it is no plausible time.
qint64 TimeOf(const QJsonValue &value) {
  return value.isDouble() && IsOriginTime(value.toDouble()) ? static_cast<qint64>(value.toDouble()) : 0;
}

/// What is wrong with a feed that says this of itself; empty for nothing.
QString MetadataFault(const QJsonObject &metadata, qsizetype events, qint64 now) {
  constexpr int good_status = 200;
  const qint64 generated = TimeOf(metadata["generated"_L1]);
  if (generated == 0)
    return "it does not say when it was made";
  if (QString fault = FaultOfTime(generated, now); !fault.isEmpty())
    return fault;
  if (const QJsonValue status = metadata["status"_L1]; status.isDouble() && status.toInt() != good_status)
    return QString("its status is %1").arg(status.toDouble());
  if (const QJsonValue count = metadata["count"_L1]; count.isDouble() && count.toInt(-1) != events)
    return QString("it announces %1 events and has %2").arg(count.toDouble()).arg(events);
  return {};
}

/// All ids of a feature: its own in front, then those in a text such as ",ci38592402,us7000abcd,".
QStringList IdsOf(const QJsonObject &feature) {
  const QString own = feature["id"_L1].toString();
  const QString text = feature["properties"_L1].toObject()["ids"_L1].toString();
  QStringList ids;
  if (IsEventId(own))
    ids += own;
  for (const QStringView part : QStringView(text).split(u',', Qt::SkipEmptyParts)) {
    if (ids.size() == most_ids)
      break;
    if (ids.contains(part))
      continue;
    const QString id = part.toString();
    if (IsEventId(id))
      ids += id;
  }
  return ids;
}

std::optional<FeedEvent> ReadFeedFeature(const QJsonObject &feature, qint64 generated) {
  const QJsonObject properties = feature["properties"_L1].toObject();
  FeedEvent read;
  read.deleted = properties["status"_L1].toString() == "deleted"_L1;
  if (read.deleted) {
    read.event.id = feature["id"_L1].toString();
    if (!IsEventId(read.event.id))
      return std::nullopt;
  } else {
    std::optional<Event> event = ReadFeature(feature);
    if (!event || event->origin_time > generated + day_ms)
      return std::nullopt;
    read.event = std::move(*event);
  }
  // A revision of the future would never be replaced.
  read.updated = std::min(TimeOf(properties["updated"_L1]), generated);
  read.ids = IdsOf(feature);
  return read;
}

}  // namespace

FeedReading ReadSummaryFeed(const QByteArray &text, qint64 now) {
  if (HasTooManyValues(text))
    return FaultyReading(QString("more values than a feed of %1 events has").arg(most_feed_events));
  const FeatureCollection collection = ReadFeatureCollection(text);
  if (!collection.fault.isEmpty())
    return FaultyReading(collection.fault);
  const QJsonArray features = collection.root["features"_L1].toArray();
  const QJsonObject metadata = collection.root["metadata"_L1].toObject();
  if (const QString fault = MetadataFault(metadata, features.size(), now); !fault.isEmpty())
    return FaultyReading(fault);
  if (features.size() > most_feed_events)
    return FaultyReading(QString("more than %1 events").arg(most_feed_events));

  FeedReading reading;
  reading.generated = TimeOf(metadata["generated"_L1]);
  reading.events.reserve(static_cast<std::size_t>(features.size()));
  for (const QJsonValue feature : features) {
    if (std::optional<FeedEvent> event = ReadFeedFeature(feature.toObject(), reading.generated))
      reading.events.push_back(std::move(*event));
    else
      LeaveOut(reading, IdsOf(feature.toObject()));
  }
  return FinishReading(std::move(reading));
}

}  // namespace borvane::mirror
