#pragma once

#include <QByteArray>
#include <optional>
#include <span>

#include "common/hosts.h"

namespace borvane::mirror {

/// Where the pages are that two numbers name, and most pages of named areas.
inline constexpr QByteArrayView map_folder = "/recenteqs/Maps/";

/// Whether a list page is at the path on one of the hosts that the mirror plays, served by this mirror or not.
bool IsListPath(const QByteArray &path);

/// A part of the Earth's surface between two parallels and two meridians, in degrees; the edges belong to it.
struct Box {
  double south;
  double north;
  double west;
  double east;

  bool Contains(double latitude, double longitude) const {
    return latitude >= south && latitude <= north && longitude >= west && longitude <= east;
  }
};

/// A page of the events within one named area.
struct Area {
  const char *name;
  Endpoint endpoint;
  const char *path;
  Box box;
};

/// The address of the area's page, as a mirror that listens at `port` serves it.
QByteArray PageAddress(const Area &area, quint16 port);

/// All named areas, in the order in which the monitor lists them.
std::span<const Area> Areas();

/// The area at `path` of the endpoint; when that is not known, the one area that has the path. Null when there is none.
const Area *FindArea(const QByteArray &path, std::optional<Endpoint> endpoint);

}  // namespace borvane::mirror
