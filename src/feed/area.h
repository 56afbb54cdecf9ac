#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "feed/hosts.h"

namespace borvane {

/// A page of recent earthquakes.
struct AreaPage {
  Endpoint endpoint;
  std::string_view path;
};

/// An entry of the list of areas. A heading groups the list and has no page.
struct Area {
  std::string_view text;
  std::optional<AreaPage> page;
};

// clang-format off
/// The catalogue. Position and text are one pair: the scanner of an area is chosen by its position.
inline constexpr std::array areas = {
    Area{"* CALIFORNIA (State)",  {}},
    Area{"Los Angeles",           {{Endpoint::Southern, "/recenteqs/Maps/Los_Angeles.html"}}},
    Area{"San Francisco Area",    {{Endpoint::Southern, "/recenteqs/Maps/San_Francisco.html"}}},
    Area{"Long Valley Area",      {{Endpoint::Southern, "/recenteqs/Maps/Long_Valley.html"}}},
    Area{"El Centro, CA",         {{Endpoint::Southern, "/recenteqs/Maps/116-33.html"}}},
    Area{"San Diego, CA",         {{Endpoint::Southern, "/recenteqs/Maps/117-33.html"}}},
    Area{"San Jose, CA",          {{Endpoint::Southern, "/recenteqs/Maps/121-37.html"}}},
    Area{"Salinas, CA",           {{Endpoint::Southern, "/recenteqs/Maps/121-37.html"}}},
    Area{"San Benito, CA",        {{Endpoint::Southern, "/recenteqs/Maps/121-37.html"}}},
    Area{"San Juan Bautista, CA", {{Endpoint::Southern, "/recenteqs/Maps/121-37.html"}}},
    Area{"Monterey, CA",          {{Endpoint::Southern, "/recenteqs/Maps/121-37.html"}}},
    Area{"* WASHINGTON (State)",  {}},
    Area{"Seattle Area",          {{Endpoint::PacificNorthwest, "/recenteqs/Quakes/quakes0.html"}}},
    Area{"* ALASKA",              {}},
    Area{"All Alaska",            {{Endpoint::Alaska, "/recenteqs_sub/"}}},
    Area{"* UT, ID, AZ, NV, WY, CO, MO, NM", {}},
    Area{"Intermountain West",    {{Endpoint::Utah, "/req2webdir/recenteqs/Quakes/quakes0.html"}}},
    Area{"San Andreas (fault)",   {{Endpoint::Northern, "/recenteqs/Maps/Parkfield.html"}}},
    Area{"* KY, NY, TN, MO, KS, OH, SC, AL, AR, PA", {}},
    Area{"Central US",            {{Endpoint::Memphis, "/recenteqs/Quakes/quakes0.html"}}},
    Area{"* NY, QUE, ONT, NH, VT, ME, PA", {}},
    Area{"NorthEastern",          {{Endpoint::Northeastern, "/LCSN/recenteqs/Quakes/quakes0.html"}}},
    // Meant (misspelt-worldwide-entry): "Worlwide" lacks a letter. The stored area and the choice of the scanner go by this text.
    Area{"Worlwide <5",           {{Endpoint::National, "/eqcenter/recenteqsww/Quakes/quakes_all.php"}}},
    Area{"Worldwide 5+",          {{Endpoint::National, "/eqcenter/recenteqsww/Quakes/quakes_big.php"}}},
    Area{"Puerto Rico",           {{Endpoint::PuertoRico, "/recenteqs/eqs_all.htm"}}},
};
// clang-format on

/// Puts the address of the chosen page into `SiteRoot`: the page named by the two coordinates when "Lat/Long" is ticked
/// or no area is chosen, else the page of the chosen area. A heading or a text that is no area changes nothing. Raises
/// an overflow for coordinates outside 16 bits, whether they are used or not.
void GetAreaUrl();

/// Stores the chosen area.
void SaveArea();

}  // namespace borvane
