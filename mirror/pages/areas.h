#pragma once

#include <QByteArray>
#include <optional>
#include <span>

namespace borvane::mirror {

/// The kinds of hosts whose pages the mirror plays. A request names one by its host name, "southern.localhost" and so
/// on.
enum class HostKind {
  National,
  Southern,
  Northern,
  PacificNorthwest,
  Alaska,
  Utah,
  Memphis,
  Northeastern,
  PuertoRico,
  Maker,
};

/// The label in front of ".localhost" that stands for the kind.
const char *HostLabel(HostKind kind);

/// The kind that the value of a Host header names, with or without a port, in any case; nothing for any other host.
std::optional<HostKind> KindOfHost(const QByteArray &host);

/// The address of a path on a host of that kind, as this mirror plays it at `port`.
QByteArray PageAddress(HostKind kind, quint16 port, const QByteArray &path);

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
  HostKind host;
  const char *path;
  Box box;
};

/// All named areas, in the order in which the monitor lists them.
std::span<const Area> Areas();

/// The area at `path` on the host; when the host is not known, the one area that has the path. Null when there is none.
const Area *FindArea(const QByteArray &path, std::optional<HostKind> host);

}  // namespace borvane::mirror
