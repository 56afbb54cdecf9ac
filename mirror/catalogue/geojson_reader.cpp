#include "catalogue/geojson_reader.h"

#include <cmath>

namespace borvane::mirror {

QString SharedTexts::Of(std::string_view utf8) {
  const auto found = texts_.find(utf8);
  return found != texts_.end() ? found->second : texts_.emplace(utf8, QString::fromUtf8(utf8)).first->second;
}

std::optional<Event> EventOf(const Feature &feature, SharedTexts &shared) {
  if (!feature.time || !feature.longitude || !feature.latitude)
    return std::nullopt;
  Event event;
  event.id = QString::fromUtf8(feature.id);
  const std::optional<double> normal_longitude = NormalLongitude(*feature.longitude);
  if (!IsEventId(event.id) || !IsOriginTime(*feature.time) || !normal_longitude || !(std::abs(*feature.latitude) <= 90))
    return std::nullopt;
  event.origin_time = static_cast<qint64>(*feature.time);
  event.longitude = *normal_longitude;
  event.latitude = *feature.latitude;

  if (feature.depth)
    event.depth = PlausibleDepth(*feature.depth);
  if (feature.magnitude)
    event.magnitude = PlausibleMagnitude(*feature.magnitude);
  event.place = QString::fromUtf8(feature.place);
  event.network = shared.Of(feature.network);
  event.kind = shared.Of(feature.kind);
  return event;
}

CatalogueReading ReadGeoJson(const QByteArray &text) {
  const FeatureCollection collection(text);
  CatalogueReading reading;
  reading.fault = collection.fault();
  SharedTexts shared;
  collection.ForEach([&](const Feature &feature) {
    if (std::optional<Event> event = EventOf(feature, shared))
      reading.events.push_back(std::move(*event));
    else
      ++reading.left_out;
  });
  return reading;
}

}  // namespace borvane::mirror
