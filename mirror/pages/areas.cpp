#include "pages/areas.h"

#include <algorithm>
#include <array>

namespace borvane::mirror {

namespace {

// The one table of what is served where. The pages that are named by two numbers hold the events within one degree of
// longitude and latitude, so that they are the same with and without their row here.
constexpr std::array<Area, 9> areas = {{
    {"Los Angeles", Endpoint::Southern, "/recenteqs/Maps/Los_Angeles.html", {33.0, 35.0, -119.5, -116.5}},
    {"San Francisco", Endpoint::Southern, "/recenteqs/Maps/San_Francisco.html", {36.8, 38.8, -123.5, -121.2}},
    {"Long Valley", Endpoint::Southern, "/recenteqs/Maps/Long_Valley.html", {37.0, 38.3, -119.6, -118.0}},
    {"El Centro", Endpoint::Southern, "/recenteqs/Maps/116-33.html", {32.0, 34.0, -117.0, -115.0}},
    {"San Diego", Endpoint::Southern, "/recenteqs/Maps/117-33.html", {32.0, 34.0, -118.0, -116.0}},
    {"San Jose, Salinas, Monterey", Endpoint::Southern, "/recenteqs/Maps/121-37.html", {36.0, 38.0, -122.0, -120.0}},
    {"Pacific Northwest", Endpoint::PacificNorthwest, "/recenteqs/Quakes/quakes0.html", {45.5, 49.2, -124.8, -119.5}},
    {"Parkfield, San Andreas Fault",
     Endpoint::Northern,
     "/recenteqs/Maps/Parkfield.html",
     {35.4, 36.7, -121.2, -119.8}},
    {"Central US", Endpoint::Memphis, "/recenteqs/Quakes/quakes0.html", {33.0, 39.5, -95.0, -84.0}},
}};

// The list pages of all networks outside the folder of maps.
constexpr std::array<QByteArrayView, 7> list_paths = {
    "/recenteqs/Quakes/quakes0.html",
    "/recenteqs_sub/",
    "/req2webdir/recenteqs/Quakes/quakes0.html",
    "/LCSN/recenteqs/Quakes/quakes0.html",
    "/eqcenter/recenteqsww/Quakes/quakes_all.php",
    "/eqcenter/recenteqsww/Quakes/quakes_big.php",
    "/recenteqs/eqs_all.htm",
};

}  // namespace

QByteArray PageAddress(const Area &area, quint16 port) {
  return "http://" + QByteArray::fromStdString(MirrorHost(area.endpoint, port)) + area.path;
}

bool IsListPath(const QByteArray &path) {
  return path.startsWith(map_folder) || std::find(list_paths.begin(), list_paths.end(), path) != list_paths.end();
}

std::span<const Area> Areas() { return areas; }

const Area *FindArea(const QByteArray &path, std::optional<Endpoint> endpoint) {
  const Area *found = nullptr;
  for (const Area &area : areas) {
    if (path != area.path || (endpoint && *endpoint != area.endpoint))
      continue;
    if (found)
      return nullptr;
    found = &area;
  }
  return found;
}

}  // namespace borvane::mirror
