#include "pages/areas.h"

#include <array>

namespace borvane::mirror {

namespace {

constexpr std::array<const char *, 10> host_labels = {
    "national", "southern", "northern",     "pacificnorthwest", "alaska",
    "utah",     "memphis",  "northeastern", "puertorico",       "maker",
};

// The one table of what is served where. The pages that are named by two numbers hold the events within one degree of
// longitude and latitude, so that they are the same with and without their row here.
constexpr std::array<Area, 9> areas = {{
    {"Los Angeles", HostKind::Southern, "/recenteqs/Maps/Los_Angeles.html", {33.0, 35.0, -119.5, -116.5}},
    {"San Francisco", HostKind::Southern, "/recenteqs/Maps/San_Francisco.html", {36.8, 38.8, -123.5, -121.2}},
    {"Long Valley", HostKind::Southern, "/recenteqs/Maps/Long_Valley.html", {37.0, 38.3, -119.6, -118.0}},
    {"El Centro", HostKind::Southern, "/recenteqs/Maps/116-33.html", {32.0, 34.0, -117.0, -115.0}},
    {"San Diego", HostKind::Southern, "/recenteqs/Maps/117-33.html", {32.0, 34.0, -118.0, -116.0}},
    {"San Jose, Salinas, Monterey", HostKind::Southern, "/recenteqs/Maps/121-37.html", {36.0, 38.0, -122.0, -120.0}},
    {"Pacific Northwest", HostKind::PacificNorthwest, "/recenteqs/Quakes/quakes0.html", {45.5, 49.2, -124.8, -119.5}},
    {"Parkfield, San Andreas Fault",
     HostKind::Northern,
     "/recenteqs/Maps/Parkfield.html",
     {35.4, 36.7, -121.2, -119.8}},
    {"Central US", HostKind::Memphis, "/recenteqs/Quakes/quakes0.html", {33.0, 39.5, -95.0, -84.0}},
}};

}  // namespace

const char *HostLabel(HostKind kind) { return host_labels[static_cast<std::size_t>(kind)]; }

std::optional<HostKind> KindOfHost(const QByteArray &host) {
  const qsizetype port = host.indexOf(':');
  QByteArray name = (port < 0 ? host : host.first(port)).toLower();
  if (!name.endsWith(".localhost"))
    return std::nullopt;
  name.chop(static_cast<qsizetype>(sizeof ".localhost") - 1);
  for (std::size_t i = 0; i < host_labels.size(); ++i)
    if (name == host_labels[i])
      return static_cast<HostKind>(i);
  return std::nullopt;
}

QByteArray PageAddress(HostKind kind, quint16 port, const QByteArray &path) {
  return QByteArray("http://") + HostLabel(kind) + ".localhost:" + QByteArray::number(port) + path;
}

std::span<const Area> Areas() { return areas; }

const Area *FindArea(const QByteArray &path, std::optional<HostKind> host) {
  const Area *found = nullptr;
  for (const Area &area : areas) {
    if (path != area.path || (host && *host != area.host))
      continue;
    if (found)
      return nullptr;
    found = &area;
  }
  return found;
}

}  // namespace borvane::mirror
