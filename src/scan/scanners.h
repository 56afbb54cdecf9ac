#pragma once

#include <string>

#include "basic/integer.h"

namespace borvane {

// The scanners take the events out of a page by plain search for fixed markers, with fixed offsets, and put them into
// the lists of frmRecords. A page that does not fit the markers raises a failure; the rows so far stay in the list.
// Beside each is the upper bound of its EventFields; a read beyond it fails, and some scanners rely on that.

/// Takes the refresh mode, which it ignores, and the page, of which it leaves the part that it has not read.
using Scanner = void (*)(Integer &mode, std::string &page);

/// Reads a regional list of recent earthquakes.
void ScanQuakesList(Integer &mode, std::string &page);
inline constexpr int quakes_list_bound = 20;

/// Reads a list whose rows begin with a link to a map.
void ScanMapList(Integer &mode, std::string &page);
inline constexpr int map_list_bound = 20;

/// Reads the table of a region.
void ScanRegionTable(Integer &mode, std::string &page);
inline constexpr int region_table_bound = 4;

/// Reads a list whose rows begin with a cell that links to a map.
void ScanMapAnchorList(Integer &mode, std::string &page);
inline constexpr int map_anchor_list_bound = 10;

/// Reads the list of the world, for the list of events or for the headline.
void ScanWorldList(Integer &mode, std::string &page);
inline constexpr int world_list_bound = 10;

}  // namespace borvane
