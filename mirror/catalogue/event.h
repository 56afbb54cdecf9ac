#pragma once

#include <QString>
#include <optional>

namespace borvane::mirror {

/// One seismic event of the catalogue.
struct Event {
  QString id;                       ///< letters, digits, ".", "_" and "-" only, see IsEventId
  qint64 origin_time = 0;           ///< milliseconds since 1970-01-01 00:00 UTC, within the years 1000 to 9999
  double latitude = 0;              ///< of the epicentre in degrees, north positive, -90 to 90
  double longitude = 0;             ///< of the epicentre in degrees, east positive, -180 to 180
  std::optional<double> depth;      ///< in kilometres below sea level
  std::optional<double> magnitude;  ///< -9.9 to 99.9: what the list pages have room for
  QString place;                    ///< as the catalogue has it, any characters; may be empty
  QString network;                  ///< code of the network that gave the event; may be empty
  QString kind;                     ///< "earthquake", "quarry blast" ...; may be empty
  qint64 updated = 0;               ///< when it was last revised, milliseconds since 1970 UTC; 0 if that is not known
  QString credit = {};              ///< whom to thank for it; empty for the US Geological Survey
  bool is_listed = true;            ///< whether it is on list pages; its own page it has in any case

  bool operator==(const Event &) const = default;
};

/// Whether `id` can name an event: 1 to 64 letters, digits, ".", "_" and "-" of ASCII. Nothing else can be in the
/// path of an event's page as it is.
bool IsEventId(const QString &id);

/// Whether `milliseconds` since 1970 lie within the years that the pages' dates of ten characters have room for.
bool IsOriginTime(double milliseconds);

/// `degrees` of longitude brought between -180 and 180; nothing when it is more than one turn away.
std::optional<double> NormalLongitude(double degrees);

/// `value` when it can be an event's magnitude, otherwise nothing.
std::optional<double> PlausibleMagnitude(double value);

/// `value` when it can be a depth in kilometres within the Earth or its mountains, otherwise nothing.
std::optional<double> PlausibleDepth(double value);

}  // namespace borvane::mirror
