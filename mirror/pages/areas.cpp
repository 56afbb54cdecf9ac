#include "pages/areas.h"

#include <algorithm>
#include <array>

namespace borvane::mirror {

namespace {

constexpr Box world = {-90.0, 90.0, -180.0, 180.0};

// The one table of what is served where. The pages that are named by two numbers hold the events within one degree of
// longitude and latitude, so that they are the same with and without their row here.
// clang-format off
constexpr std::array<Area, 15> all_areas = {{
    {"Los Angeles", Endpoint::Southern, "/recenteqs/Maps/Los_Angeles.html", ListForm::Quakes, {33.0, 35.0, -119.5, -116.5}},
    {"San Francisco", Endpoint::Southern, "/recenteqs/Maps/San_Francisco.html", ListForm::Quakes, {36.8, 38.8, -123.5, -121.2}},
    {"Long Valley", Endpoint::Southern, "/recenteqs/Maps/Long_Valley.html", ListForm::Quakes, {37.0, 38.3, -119.6, -118.0}},
    {"El Centro", Endpoint::Southern, "/recenteqs/Maps/116-33.html", ListForm::Quakes, {32.0, 34.0, -117.0, -115.0}},
    {"San Diego", Endpoint::Southern, "/recenteqs/Maps/117-33.html", ListForm::Quakes, {32.0, 34.0, -118.0, -116.0}},
    {"San Jose, Salinas, Monterey", Endpoint::Southern, "/recenteqs/Maps/121-37.html", ListForm::Quakes, {36.0, 38.0, -122.0, -120.0}},
    {"Pacific Northwest", Endpoint::PacificNorthwest, "/recenteqs/Quakes/quakes0.html", ListForm::Quakes, {45.5, 49.2, -124.8, -119.5}},
    {"Alaska", Endpoint::Alaska, "/recenteqs_sub/", ListForm::Region, {50.0, 72.0, 170.0, -130.0}},
    {"Intermountain West", Endpoint::Utah, "/req2webdir/recenteqs/Quakes/quakes0.html", ListForm::MapList, {34.0, 49.0, -116.0, -102.0}},
    {"Parkfield, San Andreas Fault", Endpoint::Northern, "/recenteqs/Maps/Parkfield.html", ListForm::Quakes, {35.4, 36.7, -121.2, -119.8}},
    {"Central US", Endpoint::Memphis, "/recenteqs/Quakes/quakes0.html", ListForm::Quakes, {33.0, 39.5, -95.0, -84.0}},
    {"Northeastern US and Canada", Endpoint::Northeastern, "/LCSN/recenteqs/Quakes/quakes0.html", ListForm::MapList, {38.0, 52.0, -84.0, -64.0}},
    {"World, Magnitude 2.5 and Above", Endpoint::National, "/eqcenter/recenteqsww/Quakes/quakes_all.php", ListForm::World, world, 2.5},
    {"World, Magnitude 5 and Above", Endpoint::National, "/eqcenter/recenteqsww/Quakes/quakes_big.php", ListForm::World, world, 5.0},
    {"Puerto Rico", Endpoint::PuertoRico, "/recenteqs/eqs_all.htm", ListForm::MapAnchor, {16.5, 20.5, -69.5, -63.5}},
}};
// clang-format on

}  // namespace

bool IsListPath(const QByteArray &path) {
  return path.startsWith(map_folder) ||
         std::any_of(all_areas.begin(), all_areas.end(), [&](const Area &area) { return path == area.path; });
}

std::span<const Area> Areas() { return all_areas; }

std::vector<Area> AreasWith(const std::vector<NamedBox> &boxes) {
  std::vector<Area> changed(all_areas.begin(), all_areas.end());
  for (const NamedBox &named : boxes)
    for (Area &area : changed)
      if (named.name == area.name)
        area.box = named.box;
  return changed;
}

const Area *FindArea(const QByteArray &path, std::optional<Endpoint> endpoint, std::span<const Area> areas) {
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
