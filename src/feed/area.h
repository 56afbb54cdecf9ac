#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "feed/hosts.h"
#include "scan/scanners.h"

namespace borvane {

/// A page of recent earthquakes and the scanner that reads it.
struct AreaPage {
  Endpoint endpoint;
  std::string_view path;
  Scanner scan;
};

/// An entry of the list of areas. A heading groups the list and has no page.
struct Area {
  std::string_view text;
  std::optional<AreaPage> page;
};

// clang-format off
/// The catalogue, in the order of the list. Everything about an area is found by its text.
inline constexpr std::array areas = {
    Area{"* CALIFORNIA (State)",  {}},
    Area{"Los Angeles",           {{Endpoint::Southern, "/recenteqs/Maps/Los_Angeles.html", ScanQuakesList}}},
    Area{"San Francisco Area",    {{Endpoint::Southern, "/recenteqs/Maps/San_Francisco.html", ScanQuakesList}}},
    Area{"Long Valley Area",      {{Endpoint::Southern, "/recenteqs/Maps/Long_Valley.html", ScanQuakesList}}},
    Area{"El Centro, CA",         {{Endpoint::Southern, "/recenteqs/Maps/116-33.html", ScanQuakesList}}},
    Area{"San Diego, CA",         {{Endpoint::Southern, "/recenteqs/Maps/117-33.html", ScanQuakesList}}},
    Area{"San Jose, CA",          {{Endpoint::Southern, "/recenteqs/Maps/121-37.html", ScanQuakesList}}},
    Area{"Salinas, CA",           {{Endpoint::Southern, "/recenteqs/Maps/121-37.html", ScanQuakesList}}},
    Area{"San Benito, CA",        {{Endpoint::Southern, "/recenteqs/Maps/121-37.html", ScanQuakesList}}},
    Area{"San Juan Bautista, CA", {{Endpoint::Southern, "/recenteqs/Maps/121-37.html", ScanQuakesList}}},
    Area{"Monterey, CA",          {{Endpoint::Southern, "/recenteqs/Maps/121-37.html", ScanQuakesList}}},
    Area{"* WASHINGTON (State)",  {}},
    Area{"Seattle Area",          {{Endpoint::PacificNorthwest, "/recenteqs/Quakes/quakes0.html", ScanQuakesList}}},
    Area{"* ALASKA",              {}},
    Area{"All Alaska",            {{Endpoint::Alaska, "/recenteqs_sub/", ScanRegionTable}}},
    Area{"* UT, ID, AZ, NV, WY, CO, MO, NM", {}},
    Area{"Intermountain West",    {{Endpoint::Utah, "/req2webdir/recenteqs/Quakes/quakes0.html", ScanMapList}}},
    Area{"San Andreas (fault)",   {{Endpoint::Northern, "/recenteqs/Maps/Parkfield.html", ScanQuakesList}}},
    Area{"* KY, NY, TN, MO, KS, OH, SC, AL, AR, PA", {}},
    Area{"Central US",            {{Endpoint::Memphis, "/recenteqs/Quakes/quakes0.html", ScanQuakesList}}},
    Area{"* NY, QUE, ONT, NH, VT, ME, PA", {}},
    Area{"NorthEastern",          {{Endpoint::Northeastern, "/LCSN/recenteqs/Quakes/quakes0.html", ScanMapList}}},
    // Meant (misspelt-worldwide-entry): "Worlwide" lacks a letter. The stored area, the page and the scanner go by this text.
    Area{"Worlwide <5",           {{Endpoint::National, "/eqcenter/recenteqsww/Quakes/quakes_all.php", ScanWorldList}}},
    Area{"Worldwide 5+",          {{Endpoint::National, "/eqcenter/recenteqsww/Quakes/quakes_big.php", ScanWorldList}}},
    Area{"Puerto Rico",           {{Endpoint::PuertoRico, "/recenteqs/eqs_all.htm", ScanMapAnchorList}}},
};
// clang-format on

/// Puts the address of the chosen page into `SiteRoot`: the page named by the two coordinates when "Lat/Long" is ticked
/// or no area is chosen, else the page of the chosen area. A heading or a text that is no area changes nothing. Raises
/// an overflow for coordinates outside 16 bits, whether they are used or not.
void GetAreaUrl();

/// The scanner of the area with that text; ScanQuakesList for a heading and for a text that is no area.
Scanner ScannerOf(std::string_view area);

/// Stores the chosen area.
void SaveArea();

}  // namespace borvane
