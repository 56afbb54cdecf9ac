#include "catalogue/geojson_reader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

namespace borvane::mirror {

using namespace Qt::Literals::StringLiterals;

std::optional<Event> ReadFeature(const QJsonObject &feature) {
  const QJsonObject properties = feature["properties"_L1].toObject();
  const QJsonArray coordinates = feature["geometry"_L1].toObject()["coordinates"_L1].toArray();
  Event event;
  event.id = feature["id"_L1].toString();
  const QJsonValue time = properties["time"_L1];
  const QJsonValue longitude = coordinates.at(0);
  const QJsonValue latitude = coordinates.at(1);
  if (!IsEventId(event.id) || !time.isDouble() || !longitude.isDouble() || !latitude.isDouble())
    return std::nullopt;

  const std::optional<double> normal_longitude = NormalLongitude(longitude.toDouble());
  if (!IsOriginTime(time.toDouble()) || !normal_longitude || !(std::abs(latitude.toDouble()) <= 90))
    return std::nullopt;
  event.origin_time = static_cast<qint64>(time.toDouble());
  event.longitude = *normal_longitude;
  event.latitude = latitude.toDouble();

  if (const QJsonValue depth = coordinates.at(2); depth.isDouble())
    event.depth = PlausibleDepth(depth.toDouble());
  if (const QJsonValue magnitude = properties["mag"_L1]; magnitude.isDouble())
    event.magnitude = PlausibleMagnitude(magnitude.toDouble());
  event.place = properties["place"_L1].toString();
  event.network = properties["net"_L1].toString();
  event.kind = properties["type"_L1].toString();
  return event;
}

FeatureCollection ReadFeatureCollection(const QByteArray &text) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(text, &error);
  if (error.error != QJsonParseError::NoError)
    return {.root = {}, .fault = QString("not JSON: %1 at byte %2").arg(error.errorString()).arg(error.offset)};
  QJsonObject root = document.object();
  if (root["type"_L1].toString() != "FeatureCollection" || !root["features"_L1].isArray())
    return {.root = {}, .fault = "not a GeoJSON feature collection"};
  return {.root = std::move(root), .fault = {}};
}

CatalogueReading ReadGeoJson(const QByteArray &text) {
  const FeatureCollection collection = ReadFeatureCollection(text);
  CatalogueReading reading;
  reading.fault = collection.fault;
  const QJsonArray features = collection.root["features"_L1].toArray();
  reading.events.reserve(static_cast<std::size_t>(features.size()));
  for (const QJsonValue feature : features) {
    if (std::optional<Event> event = ReadFeature(feature.toObject()))
      reading.events.push_back(std::move(*event));
    else
      ++reading.left_out;
  }
  return reading;
}

}  // namespace borvane::mirror
