#pragma once

#include <QByteArray>
#include <QString>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/event.h"
#include "catalogue/feature_collection.h"

namespace borvane::mirror {

/// What came of reading a catalogue's text.
struct CatalogueReading {
  std::vector<Event> events;  ///< in the order of the text
  int left_out = 0;           ///< features that are no event: without a usable id, origin time or epicentre
  QString fault;              ///< what is wrong with the text as a whole; empty when it could be read
};

/// Reads the summary form of the US Geological Survey's GeoJSON feeds: a "FeatureCollection" whose features have an
/// "id", the properties "time" (milliseconds since 1970, UTC), "mag", "place", "net" and "type", and a point of
/// longitude, latitude and depth. Magnitude, depth, place, network and type may be missing, null or of a wrong kind,
/// and are then absent.
CatalogueReading ReadGeoJson(const QByteArray &text);

/// Texts that many events have in common, each in memory once.
class SharedTexts {
 public:
  QString Of(std::string_view utf8);

 private:
  std::map<std::string, QString, std::less<>> texts_;
};

/// The event of a feature; nothing when it has no usable id, origin time or epicentre.
std::optional<Event> EventOf(const Feature &feature, SharedTexts &shared);

}  // namespace borvane::mirror
